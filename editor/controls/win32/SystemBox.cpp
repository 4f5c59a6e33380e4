// Windows has a text box of its own for a frame that stands in a window.
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
