// Systems without a text box of their own: the toolkit's serves.
#include "SystemBox.h"

VSTGUI::IPlatformTextEdit* createSystemBox(VSTGUI::CFrame&, VSTGUI::IPlatformTextEditCallback*)
{
    return nullptr;
}
