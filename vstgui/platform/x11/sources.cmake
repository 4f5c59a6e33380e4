# The Linux platform: Xlib for the window, cairo for drawing, D-Bus for file dialogs.
find_package(PkgConfig REQUIRED)
pkg_check_modules(ZKR_X11 REQUIRED IMPORTED_TARGET x11 cairo cairo-ft fontconfig)

# Loaded when it is needed, hence not linked.
pkg_check_modules(ZKR_DBUS REQUIRED dbus-1)
add_library(zkr_dbus_headers INTERFACE)
target_include_directories(zkr_dbus_headers SYSTEM INTERFACE ${ZKR_DBUS_INCLUDE_DIRS})

set(ZKR_VSTGUI_PLATFORM_SOURCES
  platform/x11/cairobitmap.cpp
  platform/x11/cairofont.cpp
  platform/x11/cairosurface.cpp
  platform/x11/filechooser.cpp
  platform/x11/idlerunloop.cpp
  platform/x11/libdbus.cpp
  platform/x11/menupanel.cpp
  platform/x11/portalchooser.cpp
  platform/x11/programchooser.cpp
  platform/x11/textline.cpp
  platform/x11/windowpainter.cpp
  platform/x11/x11clipboard.cpp
  platform/x11/x11connection.cpp
  platform/x11/x11errors.cpp
  platform/x11/x11filedialog.cpp
  platform/x11/x11frame.cpp
  platform/x11/x11frameevents.cpp
  platform/x11/x11keys.cpp
  platform/x11/x11message.cpp
  platform/x11/x11optionmenu.cpp
  platform/x11/x11textedit.cpp
  platform/x11/x11timer.cpp
  platform/x11/x11toplevel.cpp)
set(ZKR_VSTGUI_PLATFORM_LINK
  zkr_dbus_headers zkr_process zkr_utf8 PkgConfig::ZKR_X11 ${CMAKE_DL_LIBS})
