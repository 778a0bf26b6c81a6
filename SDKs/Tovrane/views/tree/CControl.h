// SPDX-License-Identifier: GPL-3.0-or-later
// A view with a value, from 0 to 1 unless set otherwise, that may be bound to a parameter of the effect.
//
// A bound control writes its parameter while the user moves it, tells the host where each gesture begins and
// ends, and publishes the parameter's text as the frame's read-out. It listens until its last reference is
// dropped: stopListening returns before the destructor begins, since another thread may write the parameter
// meanwhile, and must not call a control that is partly destroyed.
//
// [window thread], except for parameterChanged and what it calls.
#pragma once

#include "CORE/Relaxed.h"
#include "Orbel/parameters/ParameterChangeListener.h"
#include "Tovrane/views/tree/CView.h"

#include <string>

namespace Tovra
{
class CControlListener;
struct Tovra_ObjectConstructorInfoBase;

class CControl : public CView, public Orbel::ParameterChangeListener
{
public:
    // The caller owns listener, which may be null and has to outlive the control.
    CControl(const CRect& rect, CControlListener* listener = nullptr, long tag = 0,
             CBitmap* background = nullptr);
    // Takes over rectangle, tag and background, and the properties for read-out, visibility and being
    // enabled; of these only the visible property is listened to.
    explicit CControl(const Tovra_ObjectConstructorInfoBase& info);
    // The copy has the value, range and listener, but is not bound to a parameter.
    CControl(const CControl& other);
    ~CControl() override;
    void forget() override;

    void draw(CDrawContext* context) override = 0;
    CView* newCopy() const override = 0;

    virtual void doIdleStuff();
    // None of these clamps. A NaN is ignored.
    virtual void setValue(float newValue);
    virtual float getValue() const { return value; }
    virtual void setMin(float bound);
    virtual float getMin() const { return minimum; }
    virtual void setMax(float bound);
    virtual float getMax() const { return maximum; }
    // The value that was drawn last; -1 while the control has to be drawn again.
    virtual void setOldValue(float drawn) { oldValue = drawn; }
    virtual float getOldValue() const { return oldValue; }
    virtual void setDefaultValue(float newDefault);
    // The default of the attached property, or, without one, what was set.
    virtual float getDefaultValue() const;
    // Clamps the value to the range.
    virtual void bounceValue();
    // If buttons is a middle click, or a left click with command, and nothing else, this sets the default
    // value in one complete edit and returns true.
    virtual bool checkDefaultValue(long buttons);
    virtual void setTag(long newTag) { tag = newTag; }
    virtual long getTag() const { return tag; }

    // A gesture on the attached property: tells the listener and the host; beginEdit also takes the focus.
    virtual void beginEdit();
    virtual void endEdit();
    virtual void performEdit();
    // A gesture on another property: the listener is not told.
    virtual void beginEdit(Orbel::ParameterProperty* property);
    virtual void endEdit(Orbel::ParameterProperty* property);
    virtual void performEdit(Orbel::ParameterProperty* property);

    // Whether a gesture of the user is under way: beginEdit was called, and endEdit was not yet.
    bool isEdited() const { return edited; }
    // The gesture cannot go on, since the control is hidden, disabled, removed or closed: it ends. Controls
    // that keep a state of their own for it override this.
    virtual void cancelEdit();

    virtual CControlListener* getListener() const { return listener; }
    virtual void setListener(CControlListener* next) { listener = next; }
    // The offset into the background bitmap.
    virtual void setBackOffset(CPoint& offset) { backOffset = offset; }
    const CPoint& getBackOffset() const { return backOffset; }
    // The change of the value by one notch of the wheel.
    virtual void setWheelInc(float increment) { wheelIncrement = increment; }
    virtual float getWheelInc() const { return wheelIncrement; }

    // The caller owns the properties, which may be null and have to outlive the control. The control becomes
    // a listener of this one, and is told of its value at once.
    virtual void setAttachedProperty(Orbel::ParameterProperty* property);
    virtual Orbel::ParameterProperty* getAttachedProperty() const { return attachedProperty; }
    // [any thread]
    void parameterChanged(Orbel::ParameterProperty* property) override;
    // A text property to which the read-out is written, too.
    virtual void setReadoutProperty(Orbel::ParameterProperty* property) { readoutProperty = property; }
    // Publishes the text of the attached property, unless the control is disabled.
    virtual void updateReadout();
    // Registers the control as a listener of a property that shows and hides it.
    virtual void setVisibleProperty(Orbel::ParameterProperty* property);
    const char* getReadoutText() const { return readoutText; }

    bool isDirty() const override;
    void setDirty(bool flag) override;
    void setVisible(bool flag) override;
    void setEnabled(bool flag) override;
    void applyMarks() override;
    bool removed(CView* parent) override;
    MouseEventResult onMouseMoved(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseEntered(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseExited(CPoint& where, const long& buttons) override;
    bool isTypeOf(const char* name) const override;
    const char* getClassName() const override { return "CControl"; }

    // Casts the view; null if it is not a control.
    static CControl* of(CView* view);

protected:
    // A line around the control while it has the keyboard's focus and the user moves it by keys.
    void drawFocus(CDrawContext* context) const;
    // Registers the control as a listener of a property that enables and disables it.
    void setEnabledProperty(Orbel::ParameterProperty* property);
    // Shows a text as the read-out.
    void publishReadout(const char* text);
    // After it has returned nobody calls parameterChanged. Controls that listen to more properties override
    // it.
    virtual void stopListening();
    // The text of the attached property's value, at most 255 bytes; of a text property the text itself. Empty
    // without a property.
    std::string textOfProperty(bool valueOnly, bool withUnit, bool longForm) const;
    bool isBoundToText() const;

    Core::Relaxed<float> value = 0.0f; // these two are written by any thread that writes the parameter
    Core::Relaxed<float> oldValue = 0.0f;

private:
    void listenInsteadOf(Core::Relaxed<Orbel::ParameterProperty*>& former, Orbel::ParameterProperty* next);

    static constexpr int readoutSize = 128;

    CControlListener* listener;
    long tag;
    float defaultValue = 0.5f;
    float minimum = 0.0f;
    float maximum = 1.0f;
    float wheelIncrement = 0.1f;
    CPoint backOffset;
    bool edited = false;
    char readoutText[readoutSize] = {};
    Orbel::ParameterProperty* readoutProperty = nullptr;
    // Written by the window thread, read by any.
    Core::Relaxed<Orbel::ParameterProperty*> visibleProperty = nullptr;
    Core::Relaxed<Orbel::ParameterProperty*> enabledProperty = nullptr;
    Core::Relaxed<Orbel::ParameterProperty*> attachedProperty = nullptr;
};
}
