// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/panel/Tovra_MiniDial.h"

#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/views/controls/DisplayColors.h"
#include "Tovrane/views/tree/CControlListener.h"
#include "Tovrane/views/tree/CFrame.h"

#include <cstring>
#include <utility>

namespace Tovra
{
void Tovra_MiniDial::CInfo::createObject()
{
    object = new Tovra_MiniDial(*this);
}

Tovra_MiniDial::Tovra_MiniDial(const CInfo& info) : Tovra_TextEdit(info) {}

bool Tovra_MiniDial::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "Tovra_MiniDial") == 0) || Tovra_TextEdit::isTypeOf(name);
}

bool Tovra_MiniDial::isSwitch() const
{
    const Orbel::ParameterProperty* const property = getAttachedProperty();
    return property != nullptr && property->getUnitType() == Orbel::ParameterUnitType::Switch;
}

bool Tovra_MiniDial::hitTest(const CPoint& where, long)
{
    const CRect& area = getMouseableArea();
    return isWithinEdges({area.left - 1.0, area.top - 1.0, area.right + 1.0, area.bottom + 1.0}, where);
}

// The drag goes on from where it is, while the parameter is on or off.
void Tovra_MiniDial::write(float next)
{
    isUnmoved = false;
    Orbel::ParameterProperty* const property = getAttachedProperty();
    if (!isSwitch())
        return Tovra_TextEdit::write(next);
    value = next;
    bounceValue();
    const float state = value >= 0.5f ? property->getMax() : property->getMin();
    if (property->getCurrentValue() == state)
        return;
    property->setValue(this, state);
    performEdit();
    if (getListener() != nullptr)
        getListener()->valueChanged(this);
}

void Tovra_MiniDial::turnOver()
{
    write(getAttachedProperty()->getCurrentValue_asBOOL() ? 0.0f : 1.0f);
    updateReadout();
}

MouseEventResult Tovra_MiniDial::onMouseDown(CPoint& where, const long& buttons)
{
    const bool wasEdited = isEdited();
    const long usual = isSwitch() ? buttons & ~kDoubleClick : buttons; // a switch is clicked twice in a row
    const MouseEventResult result = Tovra_TextEdit::onMouseDown(where, usual);
    isUnmoved = isUnmoved || (!wasEdited && isEdited());
    return result;
}

MouseEventResult Tovra_MiniDial::onMouseUp(CPoint& where, const long& buttons)
{
    const Kept<Tovra_MiniDial> self(this);
    isReleased = true;
    const MouseEventResult result = Tovra_TextEdit::onMouseUp(where, buttons);
    isReleased = false;
    return result;
}

// A release that ends a gesture without a move is a click.
void Tovra_MiniDial::cancelEdit()
{
    if (std::exchange(isUnmoved, false) && isReleased && isEdited() && isSwitch())
        turnOver();
    Tovra_TextEdit::cancelEdit();
    if (isSwitch())
        value = getAttachedProperty()->getCurrentValue_normalized();
    setDirty(true);
}

MouseEventResult Tovra_MiniDial::onMouseEntered(CPoint& where, const long& buttons)
{
    isPointedAt = true;
    setDirty(true);
    return Tovra_TextEdit::onMouseEntered(where, buttons);
}

MouseEventResult Tovra_MiniDial::onMouseExited(CPoint& where, const long& buttons)
{
    isPointedAt = false;
    setDirty(true);
    return Tovra_TextEdit::onMouseExited(where, buttons);
}

// The line below is brighter while the value is in use.
void Tovra_MiniDial::draw(CDrawContext* context)
{
    drawText(context, shownText(), size);
    context->setLineWidth(1.0);
    context->setFrameColor(isPointedAt || isEdited() ? kDisplayColor5 : kDisplayColor2);
    context->line(size.left, size.bottom - 0.5, size.right, size.bottom - 0.5);
    drawFocus(context);
    setDirty(false);
}
}
