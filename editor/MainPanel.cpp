#include "editor/MainPanel.h"

#include "BitmapNumbers.h"
#include "editor/EditorBitmap.h"
#include "params/ids/ParameterIds.h"
#include "params/lookup/Truncate.h"

#include "editor/controls/CBlinkLEDButton.h"
#include "editor/controls/CPoweredResizeButton.h"
#include "editor/controls/CPoweredVerticalSwitch.h"
#include "editor/controls/CZKKickButton2.h"

using namespace VSTGUI;

namespace {

const CPoint kSize(89, 487);

// The pulse. With each tick the level goes a fixed fraction (kFall, kRise) of the way to a target
// (kFallsTo, kRisesTo); it turns at kMinBlink and at kTurn.
constexpr float kFall = 0.14f, kFallsTo = 0.0f, kMinBlink = 0.3f;
constexpr float kRise = 0.36f, kRisesTo = 1.1f, kTurn = 1.03f, kMaxBlink = 1.0f;

// Values far below kTiny become 0.
float flushed(float level)
{
    constexpr float kTiny = 1e-14f;
    return (level + kTiny) - kTiny;
}

}  // namespace

MainPanel::MainPanel(IControlListener* listener) : StripEditor(listener) { }

bool MainPanel::attach(CFrame* parent, const CPoint& origin)
{
    if (!attachContainer(parent, origin, kSize, bitmaps::kMainPanelBackground))
        return false;
    const auto add = [this](auto* control) {
        container->addView(control);
        return control;
    };
    const auto button = [&](auto*& field, const CRect& rect, int32_t tag) {
        using Button = std::remove_reference_t<decltype(*field)>;
        field = add(new Button(rect, listener, tag, editorBitmap(bitmaps::kPanelButton), false));
    };
    power = add(new CZKROnOffButton({3, 387, 52, 463}, listener, kPower,
                                    editorBitmap(bitmaps::kPowerButton)));
    powerLed =
        add(new CMovieBitmap({17, 353, 38, 375}, nullptr, 0, 2, 22, editorBitmap(bitmaps::kLed)));
    channel = add(new CPoweredVerticalSwitch({6, 172, 53, 264}, listener, kChannel, 5, 92, 5,
                                             editorBitmap(bitmaps::kChannelSwitch)));
    channel->setValue(0.5f);
    button(midSide, {5, 123, 49, 159}, kMS);
    button(preampModule, {5, 86, 49, 122}, kQB11);
    button(link, {5, 12, 49, 48}, kLink);
    button(secondaryModule, {5, 49, 49, 85}, k2x);
    button(bypassRight, {5, 305, 49, 327}, kBpsCh2);
    // Overlaps the right one by three pixels and lies on top.
    button(bypassLeft, {5, 286, 49, 308}, kBpsCh1);
    // Invisible: it has no bitmap.
    bypassBoth =
        add(new CPoweredButton({5, 329, 49, 344}, listener, kTagBothBypass, nullptr, false));
    info = add(new CZKKickButton2({5, 462, 51, 481}, listener, kTagInfo, 19,
                                  editorBitmap(bitmaps::kInfoButton)));
    blinkLevel = 1.0f;
    blinkRising = true;
    powerOnShown = 1;
    return true;
}

void MainPanel::detach()
{
    power = nullptr;
    powerLed = nullptr;
    channel = nullptr;
    midSide = link = bypassBoth = nullptr;
    preampModule = secondaryModule = nullptr;
    bypassRight = bypassLeft = nullptr;
    info = nullptr;
    StripEditor::detach();
}

void MainPanel::setParameter(int32_t id, double value)
{
    if (!attached)
        return;
    switch (id) {
    case kPower:
        show(power, value);
        return show(powerLed, value);
    case kBpsCh1:
        show(bypassLeft, value);
        return setBothBypass();
    case kBpsCh2:
        show(bypassRight, value);
        return setBothBypass();
    case kChannel:
        return show(channel, value);
    case kMS:
        return show(midSide, value);
    case kQB11:
        return show(preampModule, value);
    case k2x:
        return show(secondaryModule, value);
    case kLink:
        return show(link, value);
    case kTagInfo:
        return show(info, value);
    default:
        return;
    }
}

// On only while both bypasses are, so that a click on it then turns both off.
void MainPanel::setBothBypass()
{
    if (bypassLeft && bypassRight)
        show(bypassBoth,
             switchValue(static_cast<double>(bypassLeft->getValue()))
                 & switchValue(static_cast<double>(bypassRight->getValue())));
}

void MainPanel::setPower(int32_t state)
{
    powerOnShown = state;
    show(powerLed, state);
    showPower(secondaryModule, state);
    showPower(link, state);
    showPower(midSide, state);
    showPower(preampModule, state);
    showPower(channel, state);
    showPower(bypassLeft, state);
    showPower(bypassRight, state);
    showPower(bypassBoth, state);
}

void MainPanel::idle()
{
    if (!bypassLeft || !bypassRight)
        return;
    if (powerOnShown == 0 || !(bypassLeft->getValue() > 0.5f || bypassRight->getValue() > 0.5f)) {
        blinkLevel = 1.0f;
        return;
    }
    if (!blinkRising) {
        blinkLevel = flushed(blinkLevel + (kFallsTo - blinkLevel) * kFall);
        if (blinkLevel < kMinBlink) {
            blinkRising = true;
            blinkLevel = kMinBlink;
        }
    } else {
        blinkLevel = flushed(blinkLevel + (kRisesTo - blinkLevel) * kRise);
        if (blinkLevel > kTurn) {
            blinkRising = false;
            blinkLevel = kMaxBlink;
        }
    }
    for (CBlinkLEDButton* const button : {bypassLeft, bypassRight}) {
        button->setBlinkLevel(blinkLevel);
        button->setDirty();
    }
}

CControl* MainPanel::control(int32_t tag) const
{
    for (CControl* const candidate :
         {static_cast<CControl*>(power), static_cast<CControl*>(channel),
          static_cast<CControl*>(midSide), static_cast<CControl*>(preampModule),
          static_cast<CControl*>(link), static_cast<CControl*>(secondaryModule),
          static_cast<CControl*>(bypassRight), static_cast<CControl*>(bypassLeft),
          static_cast<CControl*>(bypassBoth), static_cast<CControl*>(info)})
        if (candidate && candidate->getTag() == tag)
            return candidate;
    return nullptr;
}

CRect MainPanel::controlRect(int32_t tag) const
{
    const CControl* const found = control(tag);
    if (!found)
        return CRect();
    CRect rect = found->getViewSize();
    const CRect panel = container->getViewSize();
    rect.offset(panel.left, panel.top);
    return rect;
}
