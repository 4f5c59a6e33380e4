#include "public.sdk/source/vst/vstguieditor.h"

#include "public.sdk/source/vst/vstguiplatform.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {

namespace {

constexpr uint32_t kIdleRateMs = 100;

// Modifiers of IPlugView; on a PC the command key is Ctrl.
constexpr int16 kShiftKey = 1, kAlternateKey = 2, kCommandKey = 4, kControlKey = 8;

ViewRect rectOf(const VSTGUI::CPoint& size)
{
    return ViewRect(0, 0, static_cast<int32>(size.x), static_cast<int32>(size.y));
}

// The character of a virtual key that has one.
char16 characterOfKey(int16 key)
{
    constexpr int16 kSpace = VKEY_SPACE, kFirstAscii = 128;
    if (key == kSpace)
        return ' ';
    return key >= kFirstAscii ? static_cast<char16>(key - kFirstAscii + '0') : char16(0);
}

VstKeyCode keyCodeOf(char16 character, int16 key, int16 modifiers)
{
    VstKeyCode code{};
    code.virt = static_cast<unsigned char>(key & 0xFF);
    const char16 shown = character ? character : characterOfKey(key);
    if (shown < 0x80)
        code.character = shown;
    if (modifiers & kShiftKey)
        code.modifier |= MODIFIER_SHIFT;
    if (modifiers & kAlternateKey)
        code.modifier |= MODIFIER_ALTERNATE;
    if (modifiers & kCommandKey)
        code.modifier |= MODIFIER_CONTROL;
    if (modifiers & kControlKey)
        code.modifier |= MODIFIER_COMMAND;
    return code;
}

}  // namespace

VSTGUIEditor::VSTGUIEditor(void* controller, ViewRect* size)
    : SharedObject(static_cast<EditController*>(controller), size)
{
    startToolkit();
    // Runs while attached, on the thread of the window. Hosts create views on other threads, too.
    timer = new VSTGUI::CVSTGUITimer([this](VSTGUI::CVSTGUITimer*) { tick(); }, kIdleRateMs, false);
}

VSTGUIEditor::~VSTGUIEditor()
{
    timer->forget();
}

void VSTGUIEditor::setIdleRate(int32 milliseconds)
{
    timer->setFireTime(static_cast<uint32_t>(std::max(milliseconds, int32(1))));
}

bool VSTGUIEditor::setEditorSizeConstrains(const VSTGUI::CPoint& min, const VSTGUI::CPoint& max)
{
    if (min.x > max.x || min.y > max.y)
        return false;
    minSize = min;
    maxSize = max;
    if (frame) {
        const VSTGUI::CPoint size(frame->getWidth(), frame->getHeight());
        const VSTGUI::CPoint fitting(std::clamp(size.x, min.x, max.x),
                                     std::clamp(size.y, min.y, max.y));
        if (fitting != size)
            requestResize(fitting);
    }
    return true;
}

bool VSTGUIEditor::requestResize(const VSTGUI::CPoint& size)
{
    if (hostGone || !plugFrame || size.x < minSize.x || size.y < minSize.y || size.x > maxSize.x
        || size.y > maxSize.y)
        return false;
    ViewRect wanted = rectOf(size);
    return plugFrame->resizeView(this, &wanted) == kResultTrue;
}

tresult PLUGIN_API VSTGUIEditor::isPlatformTypeSupported(FIDString type)
{
    return type && FIDStringsEqual(type, windowType()) ? kResultTrue : kInvalidArgument;
}

bool VSTGUIEditor::isOnOwnThread() const
{
    const std::thread::id own = ownThread;
    return own == std::thread::id() || own == std::this_thread::get_id();
}

tresult PLUGIN_API VSTGUIEditor::setFrame(IPlugFrame* newFrame)
{
    if (isOnOwnThread())
        return EditorView::setFrame(newFrame);
    hostGone = true;
    return kResultTrue;
}

tresult PLUGIN_API VSTGUIEditor::attached(void* parent, FIDString type)
{
    // The host may close and release the editor when it is asked to resize the window.
    const IPtr<VSTGUIEditor> alive(this);
    ownThread = std::this_thread::get_id();
    hostGone = false;
    config = makeFrameConfig(plugFrame);
    bool opened = open(parent, VSTGUI::kDefaultNative);
    if (opened && frame) {
        ViewRect size = rectOf({frame->getWidth(), frame->getHeight()});
        setRect(size);
        if (plugFrame)
            plugFrame->resizeView(this, &size);
    }
    if (opened && !frame)
        return kResultFalse;
    if (opened)
        timer->start();
    return EditorView::attached(parent, type);
}

tresult PLUGIN_API VSTGUIEditor::removed()
{
    if (!isOnOwnThread() && frame) {
        hostGone = true;
        // Keeps this object and the library alive until the window is closed.
        addRef();
        keepLibraryLoaded();
        removalPostponed = true;
        return EditorView::removed();
    }
    closeWindow();
    return EditorView::removed();
}

void VSTGUIEditor::closeWindow()
{
    timer->stop();
    close();
    config.reset();
    ownThread = std::thread::id();
}

void VSTGUIEditor::tick()
{
    if (removalPostponed.exchange(false)) {
        closeWindow();
        forget();
        return;
    }
    const IPtr<VSTGUIEditor> alive(this);
    // Hosts may open an editor on one thread and run its event loop on another.
    ownThread = std::this_thread::get_id();
    notify(timer, VSTGUI::CVSTGUITimer::kMsgTimer);
}

tresult PLUGIN_API VSTGUIEditor::onSize(ViewRect* newSize)
{
    if (!newSize)
        return kInvalidArgument;
    if (frame)
        frame->setSize(newSize->getWidth(), newSize->getHeight());
    return EditorView::onSize(newSize);
}

tresult PLUGIN_API VSTGUIEditor::onKeyDown(char16 key, int16 keyMsg, int16 modifiers)
{
    VstKeyCode code = keyCodeOf(key, keyMsg, modifiers);
    return frame && frame->onKeyDown(code) == 1 ? kResultTrue : kResultFalse;
}

tresult PLUGIN_API VSTGUIEditor::onKeyUp(char16 key, int16 keyMsg, int16 modifiers)
{
    VstKeyCode code = keyCodeOf(key, keyMsg, modifiers);
    return frame && frame->onKeyUp(code) == 1 ? kResultTrue : kResultFalse;
}

tresult PLUGIN_API VSTGUIEditor::onWheel(float distance)
{
    VSTGUI::CPoint where;
    if (!frame || !frame->getCurrentMouseLocation(where))
        return kResultFalse;
    return frame->onWheel(where, VSTGUI::kMouseWheelAxisY, distance,
                          frame->getCurrentMouseButtons())
        ? kResultTrue
        : kResultFalse;
}

void VSTGUIEditor::beginEdit(int32_t index)
{
    if (controller)
        controller->beginEdit(static_cast<ParamID>(index));
}

void VSTGUIEditor::endEdit(int32_t index)
{
    if (controller)
        controller->endEdit(static_cast<ParamID>(index));
}

int32_t VSTGUIEditor::getKnobMode() const
{
    switch (EditController::getHostKnobMode()) {
    case kRelativCircularMode:
        return VSTGUI::kRelativCircularMode;
    case kLinearMode:
        return VSTGUI::kLinearMode;
    default:
        return VSTGUI::kCircularMode;
    }
}

VSTGUI::CMessageResult VSTGUIEditor::notify(VSTGUI::CBaseObject* /*sender*/,
                                            VSTGUI::IdStringPtr message)
{
    if (message != VSTGUI::CVSTGUITimer::kMsgTimer)
        return VSTGUI::kMessageUnknown;
    if (frame)
        frame->idle();
    return VSTGUI::kMessageNotified;
}

}  // namespace Vst
}  // namespace Steinberg
