// SPDX-License-Identifier: GPL-3.0-or-later
// What the mouse does with the points.
#include "Orbel/parameters/ParameterProperty.h"
#include "Orbel/parameters/ParameterText.h"
#include "Tovrane/views/envelope/Tovra_EnvelopeDisplay.h"
#include "Tovrane/views/tree/CFrame.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Tovra
{
constexpr double snapDistance = 4.0; // units
constexpr float fineStep = 0.0005f;  // of a normalised value, for a unit of length

// Finding

CEnvelopePoint* Tovra_EnvelopeDisplay::getEnvelopePointFromCPoint(const CPoint& where)
{
    settle();
    for (CEnvelopePoint& point : points)
        if (point.type != CEnvelopePoint::fixed && !point.isKnob() && isWithinEdges(point.handle, where))
            return &point;
    if (!showsKnobs)
        return segmentUnder(where);
    for (CEnvelopePoint& point : points)
        if (point.isKnob() && isWithinEdges(point.handle, where))
            return &point;
    return nullptr;
}

static CPoint middleOf(const CRect& rect)
{
    return {(rect.left + rect.right) / 2.0, (rect.top + rect.bottom) / 2.0};
}

CEnvelopePoint* Tovra_EnvelopeDisplay::segmentUnder(const CPoint& where)
{
    constexpr double reach = 10.0;
    for (CEnvelopePoint& knob : points)
    {
        const CEnvelopePoint* const before = pointAt(knob.previous);
        const CEnvelopePoint* const after = pointAt(knob.next);
        if (!knob.isKnob() || before == nullptr || after == nullptr)
            continue;
        const CPoint a = middleOf(before->handle), b = middleOf(after->handle);
        if (where.x <= a.x || where.x >= b.x)
            continue;
        const float t = float((where.x - a.x) / (b.x - a.x));
        const CPoint on = curves.coordinate(a, b, knob.curveProperty->getCurrentValue(), t);
        if (std::fabs(on.x - where.x) < reach && std::fabs(on.y - where.y) < reach)
            return &knob;
    }
    return nullptr;
}

// Gestures

void Tovra_EnvelopeDisplay::beginEdit(CEnvelopePoint* point)
{
    if (point->isKnob())
        return CControl::beginEdit(point->curveProperty);
    CControl::beginEdit(point->levelProperty);
    CControl::beginEdit(point->timeProperty);
}

void Tovra_EnvelopeDisplay::endEdit(CEnvelopePoint* point)
{
    if (point->isKnob())
        return CControl::endEdit(point->curveProperty);
    CControl::endEdit(point->levelProperty);
    CControl::endEdit(point->timeProperty);
}

void Tovra_EnvelopeDisplay::cancelEdit()
{
    if (CEnvelopePoint* const point = std::exchange(edited, nullptr))
        endEdit(point);
    CControl::cancelEdit();
}

void Tovra_EnvelopeDisplay::applyMarks()
{
    CControl::applyMarks();
    if (edited != nullptr && !isVisible())
        cancelEdit();
}

void Tovra_EnvelopeDisplay::resetPoint(CEnvelopePoint& point)
{
    Orbel::ParameterProperty* const property = point.isKnob() ? point.curveProperty : point.levelProperty;
    if (property == nullptr)
        return;
    CControl::beginEdit(property);
    property->setValueToDefault();
    CControl::performEdit(property);
    CControl::endEdit(property);
    setDirty(true);
}

float Tovra_EnvelopeDisplay::directionOf(const CEnvelopePoint& knob) const
{
    const auto placeOf = [this](int index)
    { return index >= 0 && index < int(points.size()) ? points[size_t(index)].place : CPoint(); };
    if (knob.direction != 0.0f)
        return knob.direction;
    return placeOf(knob.next).y <= placeOf(knob.previous).y ? -1.0f : 1.0f;
}

MouseEventResult Tovra_EnvelopeDisplay::onMouseDown(CPoint& where, const long& buttons)
{
    const Kept<Tovra_EnvelopeDisplay> self(this);
    if (edited != nullptr) // another button
        return kMouseHandled;
    CEnvelopePoint* const point = envelopeEnabled ? getEnvelopePointFromCPoint(where) : nullptr;
    if (point == nullptr || (buttons & (kButtonLeft | kButtonMiddle)) == 0)
        return kMouseUnhandled;
    if ((buttons & kButtonMiddle) != 0)
    {
        resetPoint(*point);
        return kMouseHandledNoMoves;
    }
    edited = point;
    lastMouse = where;
    grabOffset = {where.x - point->place.x - inner.left, where.y - point->place.y - inner.top};
    levelAxis = timeAxis = Axis();
    followModifiers(where, buttons);
    if (point->isKnob())
        knobDrag.begin(*point, where.y, buttons, point->curveProperty->getCurrentValue_normalized(),
                       directionOf(*point));
    beginEdit(point);
    return onMouseMoved(where, buttons);
}

MouseEventResult Tovra_EnvelopeDisplay::onMouseMoved(CPoint& where, const long& buttons)
{
    const Kept<Tovra_EnvelopeDisplay> self(this);
    if (edited == nullptr && (buttons & ~kAllModifiers) != 0)
        return kMouseUnhandled;
    pointTo(edited != nullptr || !envelopeEnabled ? edited : getEnvelopePointFromCPoint(where));
    if (edited != nullptr && where != lastMouse)
    {
        if (edited->isKnob())
            dragKnob(where, buttons);
        else
            dragPoint(where, buttons);
        lastMouse = where;
        settle();
        setDirty(true);
    }
    updateReadout();
    return mouseOver != nullptr ? kMouseHandled : kMouseUnhandled;
}

void Tovra_EnvelopeDisplay::pointTo(CEnvelopePoint* point)
{
    if (mouseOver == point)
        return;
    mouseOver = point;
    setDirty(true);
}

MouseEventResult Tovra_EnvelopeDisplay::onMouseUp(CPoint& where, const long& buttons)
{
    const Kept<Tovra_EnvelopeDisplay> self(this);
    if (edited == nullptr || (buttons & kButtonLeft) == 0)
        return kMouseHandled;
    cancelEdit();
    if (isWithinEdges(size, where))
        onMouseMoved(where, buttons & kAllModifiers);
    else
        onMouseExited(where, 0);
    return kMouseHandled;
}

MouseEventResult Tovra_EnvelopeDisplay::onMouseExited(CPoint&, const long&)
{
    if (edited != nullptr)
        return kMouseHandled;
    pointTo(nullptr);
    updateReadout();
    return kMouseHandled;
}

// Dragging

void Tovra_EnvelopeDisplay::write(Orbel::ParameterProperty* property, float next)
{
    property->setValue(next);
    performEdit(property);
}

void Tovra_EnvelopeDisplay::writeNormalized(Orbel::ParameterProperty* property, float next)
{
    property->setValue_Normalized(next);
    performEdit(property);
}

void Tovra_EnvelopeDisplay::dragKnob(const CPoint& where, long buttons)
{
    writeNormalized(edited->curveProperty, knobDrag.valueAt(where.y, buttons));
}

// A fine drag begins where its key is pressed.
void Tovra_EnvelopeDisplay::Axis::follow(bool held, double at, const Orbel::ParameterProperty* property)
{
    if (held == isHeld)
        return;
    isHeld = held;
    anchor = at;
    start = property != nullptr ? property->getCurrentValue_normalized() : 0.0f;
}

void Tovra_EnvelopeDisplay::followModifiers(const CPoint& where, long buttons)
{
    levelAxis.follow((buttons & kModShift) != 0, where.y, edited->levelProperty);
    timeAxis.follow((buttons & kModAlt) != 0, where.x, edited->timeProperty);
}

void Tovra_EnvelopeDisplay::checkNeighborOverlap(CPoint& where, const CEnvelopePoint* point) const
{
    const CEnvelopePoint* const before = segmentStart(*point);
    if (before == nullptr || before->type == CEnvelopePoint::fixed)
        return;
    const double reach = before->handle.getWidth() / 2.0;
    where.y = std::clamp(where.y, 0.0, std::max(inner.getHeight(), 0.0));
    where.x = std::max(where.x, before->place.x);
    if (where.x - before->place.x < reach && std::fabs(where.y - before->place.y) < reach)
        where.x = before->place.x + reach;
}

CPoint Tovra_EnvelopeDisplay::snapped(CPoint place, const CEnvelopePoint& point, long buttons) const
{
    if (point.snapTimeOn && (buttons & kModAlt) == 0)
    {
        const double x = convertTimeToX(&point, point.snapTime);
        place.x = std::fabs(place.x - x) < snapDistance ? x : place.x;
    }
    if (point.snapLevelOn && (buttons & kModShift) == 0)
    {
        const double y = convertLevelToY(&point, point.snapLevel);
        place.y = std::fabs(place.y - y) < snapDistance ? y : place.y;
    }
    return place;
}

// On the way back from beyond the right edge the time stays until the mouse is at the handle again.
void Tovra_EnvelopeDisplay::dragPoint(const CPoint& where, long buttons)
{
    const CEnvelopePoint point = *edited; // what is written may move it
    CPoint place(where.x - grabOffset.x - inner.left, where.y - grabOffset.y - inner.top);
    followModifiers(where, buttons);
    const bool isBlocked = place.x > point.place.x && where.x < lastMouse.x;

    place.x = std::clamp(place.x, 0.0, std::max(inner.getWidth(), 0.0));
    place.y = std::clamp(place.y, 0.0, std::max(inner.getHeight(), 0.0));
    checkNeighborOverlap(place, &point);
    place = snapped(place, point, buttons);

    float time = point.duration + timeOffset;
    float level = point.levelProperty != nullptr ? point.levelProperty->getCurrentValue() : 0.0f;
    getValueFromPoint(&point, place, time, level);
    time += timeOffset;
    checkSnapTime(&point, time);
    if (point.levelProperty != nullptr && point.type != CEnvelopePoint::fixedLevel)
        writeLevel(point, where, buttons, level);
    if (point.timeProperty != nullptr && point.type != CEnvelopePoint::fixedTime && !isBlocked)
        writeTime(point, where, buttons, time);
}

void Tovra_EnvelopeDisplay::writeLevel(const CEnvelopePoint& point, const CPoint& where, long buttons,
                                       float next)
{
    const bool isTimeAlone = (buttons & kModAlt) != 0 && point.timeProperty != nullptr;
    if ((buttons & kModShift) != 0)
        writeNormalized(point.levelProperty,
                        levelAxis.start + point.fineFactor * fineStep * float(levelAxis.anchor - where.y));
    else if (!isTimeAlone)
        write(point.levelProperty, next);
}

void Tovra_EnvelopeDisplay::writeTime(const CEnvelopePoint& point, const CPoint& where, long buttons,
                                      float next)
{
    const bool isLevelAlone = (buttons & kModShift) != 0 && point.levelProperty != nullptr;
    if ((buttons & kModAlt) != 0)
        writeNormalized(point.timeProperty, timeAxis.start + fineStep * float(where.x - timeAxis.anchor));
    else if (!isLevelAlone)
        write(point.timeProperty, next / tempoFactor());
}

// The read-out

std::string Tovra_EnvelopeDisplay::readoutOf(const CEnvelopePoint* point) const
{
    char text[Orbel::kParameterTextSize] = {};
    if (point == nullptr)
        return text;
    if (point->timeProperty != nullptr || point->levelProperty != nullptr)
        Orbel::renderDualPropertyText(point->timeProperty, point->levelProperty, text);
    else
        Orbel::renderDualPropertyText(point->curveProperty, nullptr, text);
    return text;
}

void Tovra_EnvelopeDisplay::updateReadout()
{
    publishReadout(readoutOf(mouseOver).c_str());
    if (getFrame() != nullptr)
        getFrame()->setCursor(mouseOver != nullptr && mouseOver->isKnob() ? kCursorVSize : kCursorDefault);
}
}
