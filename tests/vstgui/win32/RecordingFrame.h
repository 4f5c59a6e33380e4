// RecordingFrame: an open platform frame that notes down all that its window tells it.
#pragma once

#include "vstgui/platform/iplatformframe.h"

#include <functional>
#include <string>
#include <vector>
#include <windows.h>

class RecordingFrame : public VSTGUI::IPlatformFrameCallback {
public:
    // In that window, 200 wide and 150 high unless told.
    explicit RecordingFrame(HWND host, VSTGUI::CPoint size = {200, 150});
    ~RecordingFrame() override;

    // How events are answered; each may do anything.
    std::function<VSTGUI::CMouseEventResult()> onPress;
    std::function<void(VSTGUI::CDrawContext*, const VSTGUI::CRect&)> onDraw;

    // For example "down 10,20 L", "move -3,5 L shift", "exit", "cancel", "wheel 5,6 y 0.5".
    std::vector<std::string> events;
    std::vector<VSTGUI::CRect> drawn;

    VSTGUI::IPlatformFrame* operator->() const { return frame; }
    bool isOpen() const { return frame != nullptr; }
    HWND window() const { return static_cast<HWND>(frame->getPlatformRepresentation()); }
    void close();
    // Without moves, of which systems send any number.
    std::vector<std::string> eventsButMoves() const;
    bool has(const std::string& event) const;

private:
    void note(const std::string& event) { events.push_back(event); }

    bool platformDrawRect(VSTGUI::CDrawContext* context, const VSTGUI::CRect& rect) override;
    VSTGUI::CMouseEventResult platformOnMouseDown(VSTGUI::CPoint& where,
                                                  const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult platformOnMouseMoved(VSTGUI::CPoint& where,
                                                   const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult platformOnMouseUp(VSTGUI::CPoint& where,
                                                const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult platformOnMouseExited(VSTGUI::CPoint& where,
                                                    const VSTGUI::CButtonState& buttons) override;
    void platformOnMouseCancel() override { note("cancel"); }
    bool platformOnMouseWheel(const VSTGUI::CPoint& where, const VSTGUI::CMouseWheelAxis& axis,
                              const float& distance, const VSTGUI::CButtonState& buttons) override;
    bool platformOnKeyDown(VstKeyCode& key) override;
    bool platformOnKeyUp(VstKeyCode& key) override;
    void platformOnActivate(bool state) override { note(state ? "active" : "inactive"); }

    VSTGUI::SharedPointer<VSTGUI::IPlatformFrame> frame;
};
