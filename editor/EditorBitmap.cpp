#include "editor/EditorBitmap.h"

#include "resources/EditorBitmaps.h"

#include <map>

using VSTGUI::CBitmap;
using VSTGUI::SharedPointer;

namespace {

int users = 0;

std::map<int32_t, SharedPointer<CBitmap>>& decoded()
{
    static std::map<int32_t, SharedPointer<CBitmap>> bitmaps;
    return bitmaps;
}

}  // namespace

SharedPointer<CBitmap> editorBitmap(int32_t number)
{
    SharedPointer<CBitmap>& bitmap = decoded()[number];
    if (!bitmap)
        bitmap = VSTGUI::owned(new CBitmap(VSTGUI::CResourceDescription(number)));
    return bitmap;
}

BitmapUser::BitmapUser()
{
    if (++users == 1)
        registerEditorBitmaps();
}

BitmapUser::~BitmapUser()
{
    if (--users == 0)
        decoded().clear();
}
