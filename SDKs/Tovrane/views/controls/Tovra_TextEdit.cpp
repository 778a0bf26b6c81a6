// SPDX-License-Identifier: GPL-3.0-or-later
// The box with the value of a parameter.
#include "Orbel/parameters/ParameterProperty.h"
#include "Orbel/parameters/ParameterReading.h"
#include "Tovrane/views/controls/CTextEdit.h"
#include "Tovrane/views/tree/CControlListener.h"
#include "Tovrane/views/tree/CFrame.h"

#include <algorithm>
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
    : CTextEdit(info), editable(info.editable), rendersUnits(info.renderUnits), onText(info.onText)
{
    setAttachedProperty(info.attachedProperty);
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

std::string Tovra_TextEdit::shownText() const
{
    Orbel::ParameterProperty* const property = getAttachedProperty();
    if (property == nullptr)
        return getText();
    return toText && !isBoundToText() ? toText(*property) : textOfProperty(true, rendersUnits, true);
}

// Within the gesture. False if nothing has changed.
bool Tovra_TextEdit::writeTyped(Orbel::ParameterProperty& property, const std::string& typed,
                                std::optional<float> number)
{
    const float before = property.getCurrentValue();
    if (isBoundToText())
        property.setValue(typed.c_str());
    else if (number)
        property.setValue(*number);
    else if (!fromText(property, typed))
        return false;
    return isBoundToText() || property.getCurrentValue() != before;
}

static bool changes(const Orbel::ParameterProperty& property, std::optional<float> number)
{
    const float low = std::min(property.getMin(), property.getMax());
    const float high = std::max(property.getMin(), property.getMax());
    return number && std::clamp(*number, low, high) != property.getCurrentValue();
}

// One gesture; none for a text that cannot be read, or is the value that stands.
void Tovra_TextEdit::commit(const std::string& typed)
{
    Orbel::ParameterProperty* const property = getAttachedProperty();
    if (property == nullptr)
        return CTextEdit::commit(typed);
    if (isBoundToText() && onText)
        return onText(typed);
    const bool isNumber = !isBoundToText() && !fromText;
    const std::optional<float> number = isNumber ? Orbel::readPropertyText(*property, typed) : std::nullopt;
    if (isNumber && !changes(*property, number))
        return;
    beginEdit();
    if (writeTyped(*property, typed, number))
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
    if (isBoundToText())
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

void Tovra_TextEdit::stepBy(const ValueStep& step)
{
    const Kept<Tovra_TextEdit> self(this);
    if (isEdited() || isBoundToText() || !editable)
        return;
    beginEdit();
    write(value + step.of(getWheelInc()));
    endEdit();
    updateReadout();
    setDirty(true);
}

bool Tovra_TextEdit::onWheel(const CPoint& where, const float& distance, const long& buttons)
{
    const auto step = stepOfWheel(*this, where, distance, buttons);
    if (!step || isEditing())
        return false;
    stepBy(*step);
    return true;
}

long Tovra_TextEdit::onKeyDown(TovraKeyCode& code)
{
    const auto step = stepOfKey(*this, code);
    if (!step || isEditing())
        return CTextEdit::onKeyDown(code);
    stepBy(*step);
    return kKeyConsumed;
}

// The parameter

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
