// CControl: a view with a value, a tag and a listener.
#pragma once

#include "vstgui/lib/controls/icontrollistener.h"
#include "vstgui/lib/cview.h"

namespace VSTGUI {

class CControl : public CView {
public:
    // The control holds no reference to the listener. Listener and bitmap may be null.
    explicit CControl(const CRect& size, IControlListener* listener = nullptr, int32_t tag = 0,
                      CBitmap* background = nullptr);

    void draw(CDrawContext* context) override = 0;

    // Clamped to the range. Neither repaints nor calls the listener.
    virtual void setValue(float newValue);
    virtual float getValue() const { return value; }
    // 0 to 1 over the range.
    virtual void setValueNormalized(float normalized);
    virtual float getValueNormalized() const;
    virtual void setMin(float newMin);
    virtual float getMin() const { return vmin; }
    virtual void setMax(float newMax);
    virtual float getMax() const { return vmax; }
    virtual void bounceValue();
    virtual void setOldValue(float newOldValue) { oldValue = newOldValue; }
    virtual float getOldValue() const { return oldValue; }
    virtual void setDefaultValue(float newDefault) { defaultValue = newDefault; }
    virtual float getDefaultValue() const { return defaultValue; }
    virtual void setWheelInc(float newWheelInc) { wheelInc = newWheelInc; }
    virtual float getWheelInc() const { return wheelInc; }

    // Calls the listener.
    virtual void valueChanged();
    // The begin and end of a gesture. Pairs may nest, and only the outermost is reported. An end
    // without a begin is ignored.
    virtual void beginEdit();
    virtual void endEdit();
    bool isEditing() const { return editing > 0; }

    virtual void setTag(int32_t newTag);
    int32_t getTag() const { return tag; }
    IControlListener* getListener() const { return listener; }

    // The top left corner of the part of the background bitmap that is shown, for controls that
    // show a piece of a larger picture.
    virtual void setBackOffset(const CPoint& offset) { backOffset = offset; }
    const CPoint& getBackOffset() const { return backOffset; }
    void copyBackOffset() { backOffset = size.getTopLeft(); }

    // With the left button and exactly the default-value modifier: sets the default value, reports
    // a gesture if that changes the value, and returns true.
    virtual bool checkDefaultValue(CButtonState buttons);
    static int32_t kZoomModifier;
    static int32_t kDefaultValueModifier;

    // Also true while the value differs from the one drawn last.
    bool isDirty() const override;
    void setDirty(bool state = true) override;

    CLASS_METHODS_VIRTUAL(CControl, CView)

protected:
    ~CControl() override = default;
    CControl(const CControl& other);

    // After a key or the wheel has set the value: repaints and reports a whole gesture.
    void notifyIfDirty();

    IControlListener* listener;
    int32_t tag;
    float oldValue{1.f};
    float defaultValue{0.5f};
    float value{0.f};
    float vmin{0.f};
    float vmax{1.f};
    float wheelInc{0.1f};
    int32_t editing{0};
    CPoint backOffset;
};

}  // namespace VSTGUI
