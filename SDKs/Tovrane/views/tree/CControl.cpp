// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/tree/CControl.h"

#include "CORE/CString.h"
#include "Orbel/parameters/ParameterProperty.h"
#include "Orbel/parameters/ParameterText.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/OwnColors.h"
#include "Tovrane/views/tree/CControlListener.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/views/tree/Tovra_ObjectConstructorInfoBase.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Tovra
{
constexpr float redrawPending = -1.0f;

static void setNumber(Core::Relaxed<float>& number, float next)
{
    if (!std::isnan(next))
        number = next;
}

static void setNumber(float& number, float next)
{
    if (!std::isnan(next))
        number = next;
}

CControl::CControl(const CRect& rect, CControlListener* heardBy, long withTag, CBitmap* bitmap)
    : CView(rect), listener(heardBy), tag(withTag)
{
    CView::setBackground(bitmap);
}

CControl::CControl(const Tovra_ObjectConstructorInfoBase& info)
    : CControl(info.rect, nullptr, info.tag, info.background)
{
    readoutProperty = info.readoutProperty;
    enabledProperty = info.enabledProperty;
    listenInsteadOf(visibleProperty, info.visibleProperty);
}

CControl::CControl(const CControl& other)
    : CView(other),
      ParameterChangeListener(other),
      value(other.value),
      oldValue(other.oldValue),
      listener(other.listener),
      tag(other.tag),
      defaultValue(other.defaultValue),
      minimum(other.minimum),
      maximum(other.maximum),
      wheelIncrement(other.wheelIncrement),
      backOffset(other.backOffset)
{
}

CControl::~CControl()
{
    CControl::stopListening();
}

// Before the last reference is dropped: no other thread may call the control any more.
void CControl::forget()
{
    if (getReferenceCount() == 1)
        stopListening();
    CView::forget();
}

void CControl::stopListening()
{
    for (Core::Relaxed<Orbel::ParameterProperty*>* bound :
         {&visibleProperty, &enabledProperty, &attachedProperty})
        if (Orbel::ParameterProperty* property = *bound)
            property->ForgetListener(this);
}

CControl* CControl::of(CView* view)
{
    return view != nullptr && view->isTypeOf("CControl") ? static_cast<CControl*>(view) : nullptr;
}

bool CControl::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "CControl") == 0) || CView::isTypeOf(name);
}

void CControl::doIdleStuff()
{
    if (getFrame() != nullptr)
        getFrame()->doIdleStuff();
}

// The value

void CControl::setValue(float newValue)
{
    setNumber(value, newValue);
}

void CControl::setMin(float bound)
{
    setNumber(minimum, bound);
}

void CControl::setMax(float bound)
{
    setNumber(maximum, bound);
}

void CControl::setDefaultValue(float newDefault)
{
    setNumber(defaultValue, newDefault);
}

float CControl::getDefaultValue() const
{
    const Orbel::ParameterProperty* property = attachedProperty;
    return property != nullptr ? property->getDefaultValue_normalized() : defaultValue;
}

void CControl::bounceValue()
{
    if (value > maximum)
        value = maximum;
    else if (value < minimum)
        value = minimum;
}

bool CControl::checkDefaultValue(long buttons)
{
    if (buttons != kButtonMiddle && buttons != (kButtonLeft | kModCommand))
        return false;
    const Kept<CControl> self(this);
    beginEdit();
    setNumber(value, getDefaultValue());
    if (Orbel::ParameterProperty* property = attachedProperty)
        property->setValue_Normalized(value);
    performEdit();
    if (listener != nullptr)
        listener->valueChanged(this);
    endEdit();
    return true;
}

bool CControl::isDirty() const
{
    return oldValue != value || CView::isDirty();
}

void CControl::setDirty(bool flag)
{
    CView::setDirty(flag);
    const float now = value;
    if (!flag)
        oldValue = now;
    else
        oldValue = now != redrawPending ? redrawPending : 0.0f;
}

// Edits

void CControl::beginEdit()
{
    const Kept<CControl> self(this);
    edited = true;
    if (listener != nullptr)
        listener->controlBeginEdit(this);
    if (getFrame() != nullptr)
        getFrame()->setFocusView(this);
    if (getFrame() != nullptr)
        getFrame()->beginEdit(attachedProperty);
}

void CControl::endEdit()
{
    const Kept<CControl> self(this);
    edited = false;
    if (getFrame() != nullptr)
        getFrame()->endEdit(attachedProperty);
    if (listener != nullptr)
        listener->controlEndEdit(this);
}

void CControl::performEdit()
{
    if (getFrame() != nullptr)
        getFrame()->performEdit(attachedProperty);
}

void CControl::beginEdit(Orbel::ParameterProperty* property)
{
    if (getFrame() == nullptr || property == nullptr)
        return;
    const Kept<CFrame> root(getFrame());
    root->setFocusView(this);
    root->beginEdit(property);
}

void CControl::endEdit(Orbel::ParameterProperty* property)
{
    if (getFrame() != nullptr)
        getFrame()->endEdit(property);
}

void CControl::performEdit(Orbel::ParameterProperty* property)
{
    if (getFrame() != nullptr)
        getFrame()->performEdit(property);
}

void CControl::cancelEdit()
{
    if (edited)
        endEdit();
}

// On another thread the frame's next applyMarks ends the gesture.
void CControl::setVisible(bool flag)
{
    CView::setVisible(flag);
    if (!flag && isOnOwnThread())
        cancelEdit();
}

void CControl::setEnabled(bool flag)
{
    CView::setEnabled(flag);
    if (!flag && isOnOwnThread())
        cancelEdit();
}

void CControl::applyMarks()
{
    CView::applyMarks();
    if (edited && !(isVisible() && isEnabled()))
        cancelEdit();
}

bool CControl::removed(CView* parent)
{
    const Kept<CControl> self(this);
    cancelEdit();
    return CView::removed(parent);
}

void CControl::drawFocus(CDrawContext* context) const
{
    const CFrame* const root = getFrame();
    if (root == nullptr || root->getFocusView() != this || !root->showsFocus())
        return;
    context->setLineWidth(1.0);
    context->setFrameColor(OwnColors::focus);
    context->drawRoundRect(CRect(size.left + 0.5, size.top + 0.5, size.right - 0.5, size.bottom - 0.5), 3.0f,
                           kStroked);
}

// Parameters

void CControl::listenInsteadOf(Core::Relaxed<Orbel::ParameterProperty*>& former,
                               Orbel::ParameterProperty* next)
{
    Orbel::ParameterProperty* const old = former;
    former = next;
    const bool isStillHeard = old == visibleProperty || old == enabledProperty || old == attachedProperty;
    if (old != nullptr && !isStillHeard)
        old->ForgetListener(this);
    if (next != nullptr)
        next->AddListener(this, true);
}

void CControl::setAttachedProperty(Orbel::ParameterProperty* property)
{
    listenInsteadOf(attachedProperty, property);
}

void CControl::setVisibleProperty(Orbel::ParameterProperty* property)
{
    listenInsteadOf(visibleProperty, property);
}

void CControl::setEnabledProperty(Orbel::ParameterProperty* property)
{
    listenInsteadOf(enabledProperty, property);
}

void CControl::parameterChanged(Orbel::ParameterProperty* property)
{
    if (property == nullptr)
        return;
    if (property == visibleProperty)
        setVisible(property->getCurrentValue_asBOOL());
    if (property == enabledProperty)
        setEnabled(property->getCurrentValue_asBOOL());
}

// The read-out

void CControl::updateReadout()
{
    if (!isEnabled())
        return;
    publishReadout(textOfProperty(false, true, true).c_str());
}

bool CControl::isBoundToText() const
{
    const Orbel::ParameterProperty* const property = attachedProperty;
    return property != nullptr && property->getUnitType() == Orbel::ParameterUnitType::Text;
}

std::string CControl::textOfProperty(bool valueOnly, bool withUnit, bool longForm) const
{
    char text[Orbel::kParameterTextSize] = {};
    Orbel::ParameterProperty* const property = attachedProperty;
    if (isBoundToText())
        Core::CString(text, sizeof text).set(static_cast<const char*>(property->getDataPointer()));
    else
        Orbel::renderPropertyText(property, text, valueOnly, withUnit, longForm);
    return text;
}

void CControl::publishReadout(const char* text)
{
    Core::CString(readoutText, readoutSize).set(text);
    if (readoutProperty != nullptr && readoutProperty->getUnitType() == Orbel::ParameterUnitType::Text)
        readoutProperty->setValue(readoutText);
    if (getFrame() != nullptr)
        getFrame()->setDataReadOutText(readoutText);
}

MouseEventResult CControl::onMouseMoved(CPoint& where, const long& buttons)
{
    if (!hitTest(where, buttons))
        return CView::onMouseMoved(where, buttons);
    updateReadout();
    return kMouseHandled;
}

MouseEventResult CControl::onMouseEntered(CPoint&, const long& buttons)
{
    if (buttons == 0)
        updateReadout();
    return kMouseHandled;
}

MouseEventResult CControl::onMouseExited(CPoint&, const long& buttons)
{
    if (buttons == 0)
        publishReadout("");
    return kMouseHandled;
}
}
