// CView: a rectangle that draws itself and handles mouse and keys, in its parent's coordinates.
#pragma once

#include "vstgui/lib/cbuttonstate.h"
#include "vstgui/lib/crect.h"
#include "vstgui/lib/vstkeycode.h"

namespace VSTGUI {

class CBitmap;
class CDrawContext;
class CFrame;
class VSTGUIEditorInterface;

extern const IdStringPtr kMsgViewSizeChanged;

class CView : public CBaseObject {
public:
    // The mouseable area is the same rectangle. Enabled, visible, opaque; does not want focus.
    explicit CView(const CRect& size);
    // Copies appearance and areas; the copy has no parent.
    CView(const CView& other);
    CView& operator=(const CView&) = delete;

    // True: setDirty repaints at once instead of at the frame's next idle. Holds for all frames.
    static bool kDirtyCallAlwaysOnMainThread;

    virtual void draw(CDrawContext* context);
    // Called by containers. updateRect is in the parent's coordinates, and the clip is set to it.
    virtual void drawRect(CDrawContext* context, const CRect& updateRect);
    virtual bool isDirty() const;
    virtual void setDirty(bool state = true);
    // Requests a repaint of that part. No effect while detached or invisible.
    virtual void invalidRect(const CRect& rect);
    virtual void invalid();

    virtual void setVisible(bool state);
    // Visible and not wholly transparent.
    bool isVisible() const { return hasFlag(kVisibleFlag) && alphaValue > 0.f; }
    virtual void setAlphaValue(float alpha);  // 0 to 1
    float getAlphaValue() const { return alphaValue; }

    // `where` is a copy that the handler may change.
    virtual CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons);
    virtual CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons);
    virtual CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons);
    // The system took the mouse away during a drag. If not implemented, onMouseUp is called
    // instead.
    virtual CMouseEventResult onMouseCancel();
    virtual CMouseEventResult onMouseEntered(CPoint& where, const CButtonState& buttons);
    virtual CMouseEventResult onMouseExited(CPoint& where, const CButtonState& buttons);
    // Distance in notches, up and right positive. True when used.
    virtual bool onWheel(const CPoint& where, const float& distance, const CButtonState& buttons);
    virtual bool onWheel(const CPoint& where, const CMouseWheelAxis& axis, const float& distance,
                         const CButtonState& buttons);
    // 1 when used, else -1.
    virtual int32_t onKeyDown(VstKeyCode& keyCode);
    virtual int32_t onKeyUp(VstKeyCode& keyCode);

    virtual bool hitTest(const CPoint& where, const CButtonState& buttons = -1);
    // A disabled view gets no mouse and wheel events; the views below it do.
    virtual void setMouseEnabled(bool state = true);
    bool getMouseEnabled() const { return hasFlag(kMouseEnabledFlag); }
    virtual void setMouseableArea(const CRect& rect) { mouseableArea = rect; }
    CRect& getMouseableArea(CRect& rect) const { return rect = mouseableArea; }
    const CRect& getMouseableArea() const { return mouseableArea; }

    // Does not change the mouseable area.
    virtual void setViewSize(const CRect& rect, bool doInvalid = true);
    const CRect& getViewSize() const { return size; }
    CRect& getViewSize(CRect& rect) const { return rect = size; }
    CCoord getWidth() const { return size.getWidth(); }
    CCoord getHeight() const { return size.getHeight(); }
    // The part that is not clipped by parents, in the parent's coordinates.
    CRect getVisibleViewSize() const;
    virtual void parentSizeChanged() { }
    // For a view that is no container, local coordinates are those of its parent's content.
    virtual CPoint& frameToLocal(CPoint& point) const;
    virtual CPoint& localToFrame(CPoint& point) const;

    virtual void takeFocus() { }
    virtual void looseFocus() { }
    virtual bool wantsFocus() const { return hasFlag(kWantsFocusFlag); }
    virtual void setWantsFocus(bool state) { setFlag(kWantsFocusFlag, state); }

    // Null for none. The view keeps a reference.
    virtual void setBackground(CBitmap* bitmap);
    CBitmap* getBackground() const { return background; }
    CBitmap* getDrawBackground() const { return background; }
    // A transparent view passes on presses that it does not handle, and draws no default
    // background.
    virtual void setTransparency(bool state);
    bool getTransparency() const { return hasFlag(kTransparencyFlag); }

    // Called by containers. False when nothing changed.
    virtual bool attached(CView* parent);
    virtual bool removed(CView* parent);
    bool isAttached() const { return hasFlag(kAttachedFlag); }
    bool isSubview() const { return hasFlag(kSubviewFlag); }
    void setSubviewState(bool state) { setFlag(kSubviewFlag, state); }
    CView* getParentView() const { return pParentView; }
    // Both null while detached.
    virtual CFrame* getFrame() const { return pParentFrame; }
    virtual VSTGUIEditorInterface* getEditor() const;

    CLASS_METHODS(CView, CBaseObject)

protected:
    ~CView() override;

    enum ViewFlags {
        kAttachedFlag = 1 << 0,
        kSubviewFlag = 1 << 1,
        kVisibleFlag = 1 << 2,
        kMouseEnabledFlag = 1 << 3,
        kTransparencyFlag = 1 << 4,
        kWantsFocusFlag = 1 << 5,
        kDirtyFlag = 1 << 6
    };
    bool hasFlag(int32_t flag) const { return (viewFlags & flag) != 0; }
    void setFlag(int32_t flag, bool state)
    {
        viewFlags = state ? (viewFlags | flag) : (viewFlags & ~flag);
    }

    CRect size;
    CRect mouseableArea;
    CFrame* pParentFrame{nullptr};
    CView* pParentView{nullptr};
    int32_t viewFlags{kVisibleFlag | kMouseEnabledFlag};

private:
    void invalidateInParent();

    float alphaValue{1.f};
    SharedPointer<CBitmap> background;
};

}  // namespace VSTGUI
