// Events as short texts.
#include "RecordingFrame.h"

#include <algorithm>
#include <sstream>

using namespace VSTGUI;

namespace {

std::string describe(const char* event, const CPoint& where, const CButtonState& buttons)
{
    std::ostringstream text;
    text << event << ' ' << where.x << ',' << where.y;
    const std::pair<int32_t, const char*> words[] = {
        {kLButton, "L"},   {kMButton, "M"},       {kRButton, "R"},
        {kButton4, "4"},   {kButton5, "5"},       {kDoubleClick, "double"},
        {kShift, "shift"}, {kControl, "control"}, {kAlt, "alt"}};
    for (const auto& [bit, word] : words) {
        if (buttons & bit)
            text << ' ' << word;
    }
    return text.str();
}

std::string describe(const char* event, const VstKeyCode& key)
{
    std::ostringstream text;
    text << event << ' ' << int{key.virt} << ' ' << int{key.modifier} << ' ' << key.character;
    return text.str();
}

}  // namespace

RecordingFrame::RecordingFrame(HWND host, CPoint size)
    : frame(owned(
        IPlatformFrame::createPlatformFrame(this, CRect(CPoint(), size), host, kHWND, nullptr)))
{
}

RecordingFrame::~RecordingFrame()
{
    close();
}

void RecordingFrame::close()
{
    if (const SharedPointer<IPlatformFrame> closing = std::move(frame))
        closing->close();
}

std::vector<std::string> RecordingFrame::eventsButMoves() const
{
    std::vector<std::string> rest;
    std::copy_if(events.begin(), events.end(), std::back_inserter(rest),
                 [](const std::string& event) { return event.rfind("move", 0) != 0; });
    return rest;
}

bool RecordingFrame::has(const std::string& event) const
{
    return std::find(events.begin(), events.end(), event) != events.end();
}

bool RecordingFrame::platformDrawRect(CDrawContext* context, const CRect& rect)
{
    drawn.push_back(rect);
    if (onDraw)
        onDraw(context, rect);
    return true;
}

CMouseEventResult RecordingFrame::platformOnMouseDown(CPoint& where, const CButtonState& buttons)
{
    note(describe("down", where, buttons));
    return onPress ? onPress() : kMouseEventHandled;
}

CMouseEventResult RecordingFrame::platformOnMouseMoved(CPoint& where, const CButtonState& buttons)
{
    note(describe("move", where, buttons));
    return kMouseEventHandled;
}

CMouseEventResult RecordingFrame::platformOnMouseUp(CPoint& where, const CButtonState& buttons)
{
    note(describe("up", where, buttons));
    return kMouseEventHandled;
}

CMouseEventResult RecordingFrame::platformOnMouseExited(CPoint&, const CButtonState&)
{
    note("exit");
    return kMouseEventHandled;
}

bool RecordingFrame::platformOnMouseWheel(const CPoint& where, const CMouseWheelAxis& axis,
                                          const float& distance, const CButtonState& buttons)
{
    std::ostringstream text;
    text << describe("wheel", where, buttons) << (axis == kMouseWheelAxisX ? " x " : " y ")
         << distance;
    note(text.str());
    return true;
}

bool RecordingFrame::platformOnKeyDown(VstKeyCode& key)
{
    note(describe("key", key));
    return true;
}

bool RecordingFrame::platformOnKeyUp(VstKeyCode& key)
{
    note(describe("keyup", key));
    return true;
}
