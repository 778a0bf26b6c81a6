// A view with a value from 0 to 1 (unless set otherwise), which may be bound to a parameter of the effect.
//
// A bound control writes its parameter while the user moves it, tells the host where each gesture begins and
// ends, and publishes the parameter's text as the frame's read-out. It listens until its last reference is
// given back: stopListening has returned before any of it is destroyed, so that a parameter which is written
// on another thread meanwhile never reaches half a control.
//
// [window thread], but for parameterChanged and what it needs.
#pragma once

#include "CORE/Relaxed.h"
#include "Orbel/parameters/ParameterChangeListener.h"
#include "Tovrane/views/tree/CView.h"

namespace Tovra
{
class CControlListener;

class CControl : public CView, public Orbel::ParameterChangeListener
{
public:
    // listener, null for none, stays the caller's and has to outlive the control.
    CControl(const CRect& rect, CControlListener* listener = nullptr, long tag = 0,
             CBitmap* background = nullptr);
    // Value, range and listener are copied; the copy is bound to no parameter.
    CControl(const CControl& other);
    ~CControl() override;
    void forget() override;

    void draw(CDrawContext* context) override = 0;
    CView* newCopy() const override = 0;

    virtual void doIdleStuff();
    // None of these clamps; a NaN is refused.
    virtual void setValue(float newValue);
    virtual float getValue() const { return value; }
    virtual void setMin(float bound);
    virtual float getMin() const { return minimum; }
    virtual void setMax(float bound);
    virtual float getMax() const { return maximum; }
    // The value that was drawn last; -1 while the control is to be drawn again.
    virtual void setOldValue(float drawn) { oldValue = drawn; }
    virtual float getOldValue() const { return oldValue; }
    virtual void setDefaultValue(float newDefault);
    // That of the attached property, or else the one that was set.
    virtual float getDefaultValue() const;
    // Clamps the value to the range.
    virtual void bounceValue();
    // A middle click, or a left one with command, and nothing else, sets the default in one whole edit.
    // True if that was done.
    virtual bool checkDefaultValue(long buttons);
    virtual void setTag(long newTag) { tag = newTag; }
    virtual long getTag() const { return tag; }

    // A gesture on the attached property: to the listener, the frame's focus, and the host.
    virtual void beginEdit();
    virtual void endEdit();
    virtual void performEdit();
    // On another property: without the listener.
    virtual void beginEdit(Orbel::ParameterProperty* property);
    virtual void endEdit(Orbel::ParameterProperty* property);
    virtual void performEdit(Orbel::ParameterProperty* property);

    virtual CControlListener* getListener() const { return listener; }
    virtual void setListener(CControlListener* next) { listener = next; }
    // Into the background bitmap.
    virtual void setBackOffset(CPoint& offset) { backOffset = offset; }
    const CPoint& getBackOffset() const { return backOffset; }
    // What a notch of the wheel adds.
    virtual void setWheelInc(float increment) { wheelIncrement = increment; }
    virtual float getWheelInc() const { return wheelIncrement; }

    // Properties are not owned and have to outlive the control; null for none. This one is not listened to
    // here: controls that follow it add themselves. It is told to parameterChanged once.
    virtual void setAttachedProperty(Orbel::ParameterProperty* property);
    virtual Orbel::ParameterProperty* getAttachedProperty() const { return attachedProperty; }
    // [any thread]
    void parameterChanged(Orbel::ParameterProperty* property) override;
    // A text property that receives the read-out, too.
    virtual void setReadoutProperty(Orbel::ParameterProperty* property) { readoutProperty = property; }
    // Publishes the text of the attached property, unless the control is disabled.
    virtual void updateReadout();
    // Shows and hides the control; it is listened to.
    virtual void setVisibleProperty(Orbel::ParameterProperty* property);
    const char* getReadoutText() const { return readoutText; }

    bool isDirty() const override;
    void setDirty(bool flag) override;
    MouseEventResult onMouseMoved(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseEntered(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseExited(CPoint& where, const long& buttons) override;
    bool isTypeOf(const char* name) const override;
    const char* getClassName() const override { return "CControl"; }

    // The view as a control, null if it is none.
    static CControl* of(CView* view);

protected:
    // Enables and disables the control; it is listened to.
    void setEnabledProperty(Orbel::ParameterProperty* property);
    // Nobody calls parameterChanged once it has returned. Controls that listen to more properties add them.
    virtual void stopListening();

    Core::Relaxed<float> value = 0.0f; // written by any thread that writes the parameter, as is oldValue
    Core::Relaxed<float> oldValue = 0.0f;

private:
    void publishReadout(const char* text);
    void listenInsteadOf(Core::Relaxed<Orbel::ParameterProperty*>& former, Orbel::ParameterProperty* next);

    static constexpr int readoutSize = 128;

    CControlListener* listener;
    long tag;
    float defaultValue = 0.5f;
    float minimum = 0.0f;
    float maximum = 1.0f;
    float wheelIncrement = 0.1f;
    CPoint backOffset;
    char readoutText[readoutSize] = {};
    Orbel::ParameterProperty* readoutProperty = nullptr;
    // Written by the window thread.
    Core::Relaxed<Orbel::ParameterProperty*> visibleProperty = nullptr;
    Core::Relaxed<Orbel::ParameterProperty*> enabledProperty = nullptr;
    Core::Relaxed<Orbel::ParameterProperty*> attachedProperty = nullptr;
};
}
