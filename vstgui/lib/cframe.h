// CFrame: the root view, in a child of the host's window. It receives the system's events.
#pragma once

#include "vstgui/lib/cviewcontainer.h"
#include "vstgui/platform/iplatformframe.h"

#include <memory>

namespace VSTGUI {

class InvalidRectCollector;
class VSTGUIEditorInterface;

enum CKnobMode { kCircularMode = 0, kRelativCircularMode, kLinearMode };
constexpr int32_t kDefaultKnobMode = kCircularMode;

extern const IdStringPtr kMsgNewFocusView;
extern const IdStringPtr kMsgOldFocusView;

class CFrame : public CViewContainer, public IPlatformFrameCallback {
public:
    CFrame(const CRect& size, VSTGUIEditorInterface* editor);

    // Opens as a child of that window, which is the system's handle or an OffscreenHost. False for
    // null, when open already, and when the system creates no window.
    virtual bool open(void* systemWindow, PlatformType systemWindowType = kDefaultNative,
                      IPlatformFrameConfig* config = nullptr);
    // Removes all views, closes the window and releases the creator's reference. May be called at
    // any time, also in an event handler; views and frame live until the handlers have returned.
    virtual void close();
    bool isOpen() const { return platformFrame != nullptr; }

    // Also resizes the window. False when unchanged or refused by the editor.
    virtual bool setSize(CCoord width, CCoord height);
    virtual bool getSize(CRect& rect) const;
    // The top left corner in screen coordinates.
    virtual bool getPosition(CCoord& x, CCoord& y) const;
    // Repaints what setDirty has marked; no effect with kDirtyCallAlwaysOnMainThread.
    virtual void idle();

    // In frame coordinates, which may lie outside the frame. False without a window.
    bool getCurrentMouseLocation(CPoint& where) const;
    // Buttons and modifiers held at the moment; 0 without a window.
    CButtonState getCurrentMouseButtons() const;

    virtual void setFocusView(CView* view);
    CView* getFocusView() const { return focusView; }
    virtual bool advanceNextFocusView(CView* oldFocus, bool reverse = false);
    virtual void onActivate(bool state);

    virtual void beginEdit(int32_t tag);
    virtual void endEdit(int32_t tag);
    virtual int32_t getKnobMode() const;
    IPlatformFrame* getPlatformFrame() const { return platformFrame; }
    // Call before a menu or dialog blocks: hands the collected repaint requests to the system, and
    // from then on each one at once.
    void onStartLocalEventLoop();

    // Called by views when they are added and removed.
    void onViewAdded(CView* view);
    void onViewRemoved(CView* view);
    // Called by containers before they pass a press to a view. False for the second and third press
    // of a multiple click if the view did not get the first, for instance because the first press
    // removed a view that lay on top.
    bool mayGetPress(CView* view);

    void draw(CDrawContext* context) override;
    void drawRect(CDrawContext* context, const CRect& updateRect) override;
    void invalid() override { invalidRect(size); }
    void invalidRect(const CRect& rect) override;
    CPoint& frameToLocal(CPoint& point) const override { return point; }
    CPoint& localToFrame(CPoint& point) const override { return point; }
    CFrame* getFrame() const override { return pParentFrame; }
    VSTGUIEditorInterface* getEditor() const override { return editor; }

    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseExited(CPoint& where, const CButtonState& buttons) override;
    using CViewContainer::onWheel;
    bool onWheel(const CPoint& where, const CMouseWheelAxis& axis, const float& distance,
                 const CButtonState& buttons) override;
    int32_t onKeyDown(VstKeyCode& keyCode) override;
    int32_t onKeyUp(VstKeyCode& keyCode) override;

    bool platformDrawRect(CDrawContext* context, const CRect& rect) override;
    CMouseEventResult platformOnMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult platformOnMouseMoved(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult platformOnMouseUp(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult platformOnMouseExited(CPoint& where, const CButtonState& buttons) override;
    void platformOnMouseCancel() override;
    bool platformOnMouseWheel(const CPoint& where, const CMouseWheelAxis& axis,
                              const float& distance, const CButtonState& buttons) override;
    bool platformOnKeyDown(VstKeyCode& keyCode) override;
    bool platformOnKeyUp(VstKeyCode& keyCode) override;
    void platformOnActivate(bool state) override;

    CLASS_METHODS_NOCOPY(CFrame, CViewContainer)

protected:
    ~CFrame() override;

private:
    friend class InvalidRectCollector;
    enum class KeyHandler { down, up };

    void notePress(const CPoint& where, const CButtonState& buttons);
    void updateHover(const CPoint& where, const CButtonState& buttons);
    void leaveHoveredViews(const CPoint& where, const CButtonState& buttons);
    int32_t dispatchKey(VstKeyCode& keyCode, KeyHandler handler);

    VSTGUIEditorInterface* editor;
    SharedPointer<IPlatformFrame> platformFrame;
    CView* focusView{nullptr};  // dropped when it or a parent is removed
    CView* focusOnActivate{nullptr};
    std::vector<SharedPointer<CView>> hovered;  // outermost first
    InvalidRectCollector* collector{nullptr};   // of the running event
    struct Press {
        CPoint where;
        uint32_t time{0};           // ms
        bool repeated{false};       // the second or third of a multiple click
        bool withheld{false};       // the view there did not get the first press
        std::vector<CView*> views;  // that got it and are still attached
    };
    Press press, pressBefore;  // the latest ones
    bool active{true};
    bool settingFocus{false};
    bool closed{false};
};

}  // namespace VSTGUI
