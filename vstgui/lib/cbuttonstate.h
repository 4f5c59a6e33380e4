// CButtonState: mouse buttons and modifier keys in one word; the results of mouse handlers.
#pragma once

#include <cstdint>

namespace VSTGUI {

enum CButton {
    kLButton = 1 << 1,
    kMButton = 1 << 2,
    kRButton = 1 << 3,
    kShift = 1 << 4,
    kControl = 1 << 5,
    kAlt = 1 << 6,
    kApple = 1 << 7,
    kButton4 = 1 << 8,
    kButton5 = 1 << 9,
    kDoubleClick = 1 << 10,
    kMouseWheelInverted = 1 << 11  // wheel calls only
};

class CButtonState {
public:
    CButtonState(int32_t state = 0) : state(state) { }

    int32_t getButtonState() const
    {
        return state & (kLButton | kMButton | kRButton | kButton4 | kButton5);
    }
    int32_t getModifierState() const { return state & (kShift | kControl | kAlt | kApple); }
    // True for that button alone.
    bool isLeftButton() const { return getButtonState() == kLButton; }
    bool isRightButton() const { return getButtonState() == kRButton; }
    bool isDoubleClick() const { return (state & kDoubleClick) != 0; }

    int32_t operator()() const { return state; }
    int32_t operator&(int32_t s) const { return state & s; }
    int32_t operator|(int32_t s) const { return state | s; }
    int32_t operator~() const { return ~state; }
    CButtonState& operator=(int32_t s)
    {
        state = s;
        return *this;
    }
    CButtonState& operator&=(int32_t s) { return *this = state & s; }
    CButtonState& operator|=(int32_t s) { return *this = state | s; }
    bool operator==(const CButtonState& s) const { return state == s.state; }
    bool operator!=(const CButtonState& s) const { return state != s.state; }

private:
    int32_t state;
};

enum CMouseEventResult {
    kMouseEventNotImplemented = 0,
    kMouseEventHandled,  // after a press: the view then gets the moves and the release
    kMouseEventNotHandled,
    kMouseDownEventHandledButDontNeedMovedOrUpEvents,
    kMouseMoveEventHandledButDontNeedMoreEvents
};

enum CMouseWheelAxis { kMouseWheelAxisX = 0, kMouseWheelAxisY = 1 };

}  // namespace VSTGUI
