# The Linux platform: Xlib for the window, cairo for drawing.
find_package(PkgConfig REQUIRED)
pkg_check_modules(ZKR_X11 REQUIRED IMPORTED_TARGET x11 cairo)

set(ZKR_VSTGUI_PLATFORM_SOURCES
  platform/x11/cairobitmap.cpp
  platform/x11/cairofont.cpp
  platform/x11/cairosurface.cpp
  platform/x11/filechooser.cpp
  platform/x11/idlerunloop.cpp
  platform/x11/menupanel.cpp
  platform/x11/programchooser.cpp
  platform/x11/textline.cpp
  platform/x11/windowpainter.cpp
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
set(ZKR_VSTGUI_PLATFORM_LINK zkr_process zkr_utf8 PkgConfig::ZKR_X11 ${CMAKE_DL_LIBS})
