// On Windows a frame with a window gets a box of class "EDIT".
#include "editor/controls/SystemBox.h"

#include "editor/controls/win32/ZKRSystemBoxWin32.h"

#include "vstgui/lib/cframe.h"

using namespace VSTGUI;

IPlatformTextEdit* createSystemBox(CFrame& frame, IPlatformTextEditCallback* textEdit)
{
    IPlatformFrame* const platformFrame = frame.getPlatformFrame();
    if (!platformFrame)
        return nullptr;
    return ZKRSystemBoxWin32::create(static_cast<HWND>(platformFrame->getPlatformRepresentation()),
                                     textEdit);
}
