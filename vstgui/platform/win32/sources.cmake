# The Windows platform: its sources and the system's libraries.
set(ZKR_VSTGUI_PLATFORM_SOURCES
  platform/win32/win32bitmap.cpp
  platform/win32/win32filedialog.cpp
  platform/win32/win32filedialogclassic.cpp
  platform/win32/win32font.cpp
  platform/win32/win32frame.cpp
  platform/win32/win32framemessages.cpp
  platform/win32/win32framemouse.cpp
  platform/win32/win32gdiplus.cpp
  platform/win32/win32keys.cpp
  platform/win32/win32optionmenu.cpp
  platform/win32/win32surface.cpp
  platform/win32/win32textedit.cpp
  platform/win32/win32texteditmessages.cpp
  platform/win32/win32timer.cpp
  platform/win32/win32windowclass.cpp)
set(ZKR_VSTGUI_PLATFORM_LINK zkr_platform comctl32 comdlg32 gdi32 gdiplus ole32 shell32 shlwapi user32
    uuid)
