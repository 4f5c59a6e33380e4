// Systems without a text box of their own: the toolkit's serves.
#include "editor/controls/SystemBox.h"

VSTGUI::IPlatformTextEdit* createSystemBox(VSTGUI::CFrame&, VSTGUI::IPlatformTextEditCallback*)
{
    return nullptr;
}
