#include "public.sdk/source/vst/vst2wrapper/vst2editor.h"

#include <utility>

namespace Steinberg {
namespace Vst {

namespace {

#if SMTG_OS_WINDOWS
const FIDString kPlatform = kPlatformTypeHWND;
#else
const FIDString kPlatform = kPlatformTypeX11EmbedWindowID;
#endif

// In VST 2 Ctrl is 8 and the command key is 4; in VST 3 they are swapped.
int16 modifiersOf(VstInt32 modifiers)
{
    constexpr VstInt32 kSame = 1 | 2, kCommand = 4, kControl = 8;
    return static_cast<int16>((modifiers & kSame) | (modifiers & kCommand ? kControl : 0)
                              | (modifiers & kControl ? kCommand : 0));
}

// The character of a virtual key, if it has one; else the one that the host passes.
char16 characterOf(VstInt32 character, VstInt32 virtualKey)
{
    constexpr VstInt32 kSpace = 7, kFirstAscii = 128;
    if (virtualKey == kSpace)
        return ' ';
    if (virtualKey >= kFirstAscii)
        return static_cast<char16>(virtualKey - kFirstAscii + '0');
    return static_cast<char16>(character);
}

}  // namespace

Vst2EditorWrapper::Vst2EditorWrapper(IEditController& controller, SizeWindow sizeWindow)
    : controller(controller), sizeWindow(std::move(sizeWindow))
{
}

Vst2EditorWrapper::~Vst2EditorWrapper()
{
    Vst2EditorWrapper::close();
}

bool Vst2EditorWrapper::exists(IEditController& controller)
{
    return owned(controller.createView(ViewType::kEditor)) != nullptr;
}

bool Vst2EditorWrapper::createView()
{
    if (!view) {
        view = owned(controller.createView(ViewType::kEditor));
        if (view)
            view->setFrame(this);
    }
    return view != nullptr;
}

bool Vst2EditorWrapper::getRect(ERect** target)
{
    *target = nullptr;
    ViewRect size;
    if (!createView() || view->getSize(&size) != kResultTrue || size.getWidth() <= 0
        || size.getHeight() <= 0)
        return false;
    rect = {static_cast<VstInt16>(size.top), static_cast<VstInt16>(size.left),
            static_cast<VstInt16>(size.bottom), static_cast<VstInt16>(size.right)};
    *target = &rect;
    return true;
}

bool Vst2EditorWrapper::open(void* parentWindow)
{
    if (attached)
        close();
    if (!createView() || view->isPlatformTypeSupported(kPlatform) != kResultTrue)
        return false;
    // Set first, since the host may close the editor in the view's first call for a size.
    attached = true;
    const IPtr<IPlugView> opening = view;
    const bool opened = opening->attached(parentWindow, kPlatform) == kResultTrue;
    if (view != opening)
        return false;
    attached = opened;
    return opened;
}

void Vst2EditorWrapper::close()
{
    // Cleared first, since the view may call back while it is removed.
    const IPtr<IPlugView> closing = view;
    view = nullptr;
    if (!closing)
        return;
    closing->setFrame(nullptr);
    if (std::exchange(attached, false))
        closing->removed();
}

tresult PLUGIN_API Vst2EditorWrapper::resizeView(IPlugView* sender, ViewRect* newSize)
{
    if (!sender || !newSize || sender != view.get())
        return kResultFalse;
    const ERect before = rect;
    rect = {static_cast<VstInt16>(newSize->top), static_cast<VstInt16>(newSize->left),
            static_cast<VstInt16>(newSize->bottom), static_cast<VstInt16>(newSize->right)};
    if (rect.right - rect.left == before.right - before.left
        && rect.bottom - rect.top == before.bottom - before.top)
        return kResultTrue;
    sizeWindow(newSize->getWidth(), newSize->getHeight());
    // The host may have closed the editor meanwhile.
    return view ? view->onSize(newSize) : kResultFalse;
}

bool Vst2EditorWrapper::onKeyDown(VstInt32 character, VstInt32 virtualKey, VstInt32 modifiers)
{
    return view
        && view->onKeyDown(characterOf(character, virtualKey), static_cast<int16>(virtualKey),
                           modifiersOf(modifiers))
        == kResultTrue;
}

bool Vst2EditorWrapper::onKeyUp(VstInt32 character, VstInt32 virtualKey, VstInt32 modifiers)
{
    return view
        && view->onKeyUp(characterOf(character, virtualKey), static_cast<int16>(virtualKey),
                         modifiersOf(modifiers))
        == kResultTrue;
}

bool Vst2EditorWrapper::onWheel(float distance)
{
    return view && view->onWheel(distance) == kResultTrue;
}

bool Vst2EditorWrapper::setKnobMode(VstInt32 mode)
{
    constexpr VstInt32 kModes[] = {kCircularMode, kRelativCircularMode, kLinearMode};
    FUnknownPtr<IEditController2> controller2(&controller);
    return controller2 && mode >= 0 && mode < 3
        && controller2->setKnobMode(kModes[mode]) == kResultTrue;
}

tresult PLUGIN_API Vst2EditorWrapper::queryInterface(const TUID _iid, void** obj)
{
    QUERY_INTERFACE(_iid, obj, FUnknown::iid, IPlugFrame)
    QUERY_INTERFACE(_iid, obj, IPlugFrame::iid, IPlugFrame)
    *obj = nullptr;
    return kNoInterface;
}

}  // namespace Vst
}  // namespace Steinberg
