// Systems without a text box of their own use the toolkit's.
#include "editor/controls/SystemBox.h"

VSTGUI::IPlatformTextEdit* createSystemBox(VSTGUI::CFrame&, VSTGUI::IPlatformTextEditCallback*)
{
    return nullptr;
}
