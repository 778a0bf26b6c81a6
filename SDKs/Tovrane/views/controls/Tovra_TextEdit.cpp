// SPDX-License-Identifier: GPL-3.0-or-later
// The box with the value of a parameter.
#include "CORE/CString.h"
#include "Orbel/parameters/ParameterProperty.h"
#include "Orbel/parameters/ParameterText.h"
#include "Tovrane/views/controls/CTextEdit.h"
#include "Tovrane/views/tree/CControlListener.h"
#include "Tovrane/views/tree/CFrame.h"

#include <cmath>
#include <cstring>

namespace Tovra
{
constexpr long dragButtons = kButtonLeft | kButtonRight;

void Tovra_TextEdit::CInfo::createObject()
{
    object = new Tovra_TextEdit(*this);
}

Tovra_TextEdit::Tovra_TextEdit(const CInfo& info)
    : CTextEdit(info, info.style),
      editable(info.editable),
      rendersUnits(info.renderUnits),
      onText(info.onText)
{
    setHoriAlign(info.alignment);
    if (info.font != nullptr)
        setFont(info.font, info.fontSize);
    setFontColor(info.textColor);
    setFrameColor(info.frameColor);
    setTransparency(info.transparency);
    setMouseEnabled(info.mouseEnabled);
    if (!info.mouseEnabled)
        setMouseableArea(CRect());
    Tovra_TextEdit::setAttachedProperty(info.attachedProperty);
}

bool Tovra_TextEdit::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "Tovra_TextEdit") == 0) || CTextEdit::isTypeOf(name);
}

// Texts

void Tovra_TextEdit::setRenderers(std::function<std::string(Orbel::ParameterProperty&)> renderText,
                                  std::function<bool(Orbel::ParameterProperty&, const std::string&)> readText)
{
    toText = std::move(renderText);
    fromText = std::move(readText);
    setDirty(true);
}

bool Tovra_TextEdit::hasText() const
{
    const Orbel::ParameterProperty* const property = getAttachedProperty();
    return property != nullptr && property->getUnitType() == Orbel::ParameterUnitType::Text;
}

std::string Tovra_TextEdit::shownText() const
{
    char shown[Orbel::kParameterTextSize] = {};
    Orbel::ParameterProperty* const property = getAttachedProperty();
    if (property == nullptr)
        return getText();
    if (hasText())
        Core::CString(shown, sizeof shown).set(static_cast<const char*>(property->getDataPointer()));
    else if (toText)
        return toText(*property);
    else
        Orbel::renderPropertyText(property, shown, true, rendersUnits, true);
    return shown;
}

// One gesture, whatever the text does.
void Tovra_TextEdit::commit(const std::string& typed)
{
    Orbel::ParameterProperty* const property = getAttachedProperty();
    if (property == nullptr)
        return CTextEdit::commit(typed);
    if (hasText() && onText)
        return onText(typed);
    beginEdit();
    const float before = property->getCurrentValue();
    const bool isRead =
        fromText && !hasText() ? fromText(*property, typed) : (property->setValue(typed.c_str()), true);
    if (isRead && (hasText() || property->getCurrentValue() != before))
    {
        value = property->getCurrentValue_normalized();
        performEdit();
        if (getListener() != nullptr)
            getListener()->valueChanged(this);
    }
    endEdit();
    updateReadout();
}

void Tovra_TextEdit::draw(CDrawContext* context)
{
    drawBack(context);
    drawText(context, shownText(), size);
    drawFocus(context);
    setDirty(false);
}

// Gestures

// An integer is walked by its value, so that each number takes the same way.
void Tovra_TextEdit::write(float next)
{
    const float before = value;
    value = next;
    bounceValue();
    Orbel::ParameterProperty* const property = getAttachedProperty();
    if (value == before)
        return;
    if (property != nullptr && property->getUnitType() == Orbel::ParameterUnitType::Integer)
        property->setValue(this, property->getMin() +
                                     value * (std::fabs(property->getMin()) + std::fabs(property->getMax())));
    else if (property != nullptr)
        property->setValue_Normalized(this, value);
    performEdit();
    if (getListener() != nullptr)
        getListener()->valueChanged(this);
}

void Tovra_TextEdit::showCursor(bool isDragging)
{
    if (getFrame() != nullptr)
        getFrame()->setCursor(isDragging ? kCursorVSize : kCursorDefault);
}

MouseEventResult Tovra_TextEdit::onMouseDown(CPoint& where, const long& buttons)
{
    const Kept<Tovra_TextEdit> self(this);
    if (isEdited())
        return kMouseHandled;
    if (!editable)
        return kMouseUnhandled;
    const bool isDouble = (buttons & kDoubleClick) != 0;
    if (isDouble && (buttons & kButtonLeft) != 0)
    {
        edit();
        return kMouseHandledNoMoves;
    }
    if (hasText())
        return kMouseUnhandled;
    if (!isDouble && checkDefaultValue(buttons))
    {
        updateReadout();
        setDirty(true);
        return kMouseHandledNoMoves;
    }
    if ((buttons & dragButtons) == 0)
        return kMouseUnhandled;
    button = (buttons & kButtonLeft) != 0 ? kButtonLeft : kButtonRight;
    beginEdit();
    drag.begin(where, buttons, value, getMin(), getMax());
    showCursor(true);
    return kMouseHandled;
}

MouseEventResult Tovra_TextEdit::onMouseMoved(CPoint& where, const long& buttons)
{
    const Kept<Tovra_TextEdit> self(this);
    if (!isEdited())
        return CTextEdit::onMouseMoved(where, buttons);
    if (drag.isAtLast(where))
        return kMouseHandled;
    write(drag.valueAt(where, buttons));
    updateReadout();
    setDirty(true);
    return kMouseHandled;
}

MouseEventResult Tovra_TextEdit::onMouseUp(CPoint& where, const long& buttons)
{
    const Kept<Tovra_TextEdit> self(this);
    if (!isEdited() || (buttons & button) == 0)
        return kMouseHandled;
    cancelEdit();
    if (!isWithinEdges(size, where))
        onMouseExited(where, 0);
    return kMouseHandled;
}

void Tovra_TextEdit::cancelEdit()
{
    if (isEdited())
        showCursor(false);
    CTextEdit::cancelEdit();
}

void Tovra_TextEdit::stepBy(float distance, bool isFine)
{
    constexpr float fine = 0.1f;
    const Kept<Tovra_TextEdit> self(this);
    if (isEdited() || hasText() || !editable)
        return;
    beginEdit();
    write(value + distance * getWheelInc() * (isFine ? fine : 1.0f));
    endEdit();
    updateReadout();
    setDirty(true);
}

bool Tovra_TextEdit::onWheel(const CPoint& where, const float& distance, const long& buttons)
{
    if (!getMouseEnabled() || !hitTest(where, buttons) || !isEnabled() || isEditing())
        return false;
    stepBy(distance, (buttons & kModShift) != 0);
    return true;
}

long Tovra_TextEdit::onKeyDown(TovraKeyCode& code)
{
    const bool isArrow = code.virtualKey >= kVirtualLeft && code.virtualKey <= kVirtualDown;
    if (isEditing() || !isArrow || getFrame() == nullptr || getFrame()->getFocusView() != this ||
        !isEnabled())
        return CTextEdit::onKeyDown(code);
    const bool isUp = code.virtualKey == kVirtualUp || code.virtualKey == kVirtualRight;
    stepBy(isUp ? 1.0f : -1.0f, (code.modifiers & kKeyShift) != 0);
    return kKeyConsumed;
}

// The parameter

void Tovra_TextEdit::setAttachedProperty(Orbel::ParameterProperty* property)
{
    if (Orbel::ParameterProperty* const former = getAttachedProperty())
        former->ForgetListener(this);
    CTextEdit::setAttachedProperty(property);
    if (property != nullptr)
        property->AddListener(this, true);
}

void Tovra_TextEdit::parameterChanged(Orbel::ParameterProperty* property)
{
    if (property != nullptr && property == getAttachedProperty())
    {
        value = property->getCurrentValue_normalized();
        setDirty(true);
    }
    CTextEdit::parameterChanged(property);
}
}
