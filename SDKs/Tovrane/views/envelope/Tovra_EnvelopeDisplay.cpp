// SPDX-License-Identifier: GPL-3.0-or-later
// The points and where they stand.
#include "Tovrane/views/envelope/Tovra_EnvelopeDisplay.h"

#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/views/tree/CFrame.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Tovra
{
constexpr float referenceTempo = 128.0f; // at which times that follow the tempo are stored

void Tovra_EnvelopeDisplay::CInfo::createObject()
{
    object = new Tovra_EnvelopeDisplay(*this);
}

Tovra_EnvelopeDisplay::Tovra_EnvelopeDisplay(const CInfo& info)
    : CControl(info),
      handleBitmap(info.handleBitmap),
      hasThreeRows(info.hasThreeRows),
      tempoSync(info.tempoSync),
      absoluteTimeText(info.absoluteTimeText),
      stateSource(info.stateSource)
{
    if (handleBitmap != nullptr)
    {
        handleWidth = handleBitmap->getWidth();
        handleHeight = handleBitmap->getHeight() / (hasThreeRows ? 3.0 : 2.0);
    }
    takeInnerRect();
}

bool Tovra_EnvelopeDisplay::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "Tovra_EnvelopeDisplay") == 0) || CControl::isTypeOf(name);
}

// On half units, so that lines of width 1 are crisp.
void Tovra_EnvelopeDisplay::takeInnerRect()
{
    constexpr double margin = 10.0;
    inner = CRect(std::floor(std::min(size.left, size.right) + margin) + 0.5,
                  std::floor(std::min(size.top, size.bottom) + margin) + 0.5,
                  std::floor(std::max(size.left, size.right) - margin) - 0.5,
                  std::floor(std::max(size.top, size.bottom) - margin) - 0.5);
}

void Tovra_EnvelopeDisplay::setViewSize(const CRect& rect, bool invalidate)
{
    CControl::setViewSize(rect, invalidate);
    takeInnerRect();
    isStale = true;
}

// Points

void Tovra_EnvelopeDisplay::listenTo(const CEnvelopePoint& point, bool isListening)
{
    for (Orbel::ParameterProperty* const property :
         {point.curveProperty, point.timeProperty, point.levelProperty})
    {
        if (property == nullptr)
            continue;
        if (isListening)
            property->AddListener(this, true);
        else
            property->ForgetListener(this);
    }
}

// The view that goes must not be called by another thread any more.
void Tovra_EnvelopeDisplay::stopListening()
{
    for (const CEnvelopePoint& point : points)
        listenTo(point, false);
    CControl::stopListening();
}

void Tovra_EnvelopeDisplay::addEnvelopePoint(const CEnvelopePoint& added)
{
    CEnvelopePoint point = added;
    point.previous = int(points.size()) - 1;
    point.next = -1;
    if (point.curveProperty != nullptr)
    {
        CEnvelopePoint knob;
        knob.type = CEnvelopePoint::curveKnob;
        knob.curveProperty = point.curveProperty;
        knob.bend = point.bend;
        knob.deadZone = point.deadZone;
        knob.direction = point.direction;
        knob.previous = point.previous;
        knob.next = int(points.size()) + 1;
        points.push_back(knob);
    }
    if (CEnvelopePoint* const before = pointAt(point.previous))
        before->next = int(points.size());
    points.push_back(point);
    blinks.assign(points.size(), 0);
    edited = mouseOver = nullptr; // the vector may have moved
    listenTo(point, true);
    isStale = true;
}

void Tovra_EnvelopeDisplay::clearPoints()
{
    cancelEdit();
    for (const CEnvelopePoint& point : points)
        listenTo(point, false);
    points.clear();
    blinks.clear();
    mouseOver = nullptr;
}

CEnvelopePoint* Tovra_EnvelopeDisplay::getEnvelopePointFromIndex(int index)
{
    return index >= 0 && index < getNumEnvelopePoints() ? &points[size_t(index)] : nullptr;
}

// What places depend on

void Tovra_EnvelopeDisplay::parameterChanged(Orbel::ParameterProperty* property)
{
    isStale = true;
    CControl::parameterChanged(property);
    setDirty(true);
}

void Tovra_EnvelopeDisplay::setTempo(float beatsPerMinute)
{
    if (std::isnan(beatsPerMinute))
        return;
    tempo = std::clamp(beatsPerMinute, 10.0f, 1000.0f);
    isStale = true;
    setDirty(true);
}

float Tovra_EnvelopeDisplay::tempoFactor() const
{
    return tempoSync ? referenceTempo / getTempo() : 1.0f;
}

void Tovra_EnvelopeDisplay::setDisplayTime(float milliseconds)
{
    displayTime = milliseconds * tempoFactor();
}

void Tovra_EnvelopeDisplay::setZoom(float factor)
{
    zoom = factor;
    isStale = true;
    setDirty(true);
}

void Tovra_EnvelopeDisplay::setTimeOffset(float milliseconds)
{
    timeOffset = std::max(milliseconds, 0.0f);
    isStale = true;
    setDirty(true);
}

void Tovra_EnvelopeDisplay::setCurveType(int type)
{
    curves = curveFamily(type);
    isStale = true;
}

void Tovra_EnvelopeDisplay::setVelocity(float height)
{
    velocity = height;
    setDirty(true);
}

void Tovra_EnvelopeDisplay::setEnvelopeEnabled(bool isOn)
{
    envelopeEnabled = isOn;
    setDirty(true);
}

void Tovra_EnvelopeDisplay::setFillGradient(bool isOn, bool fromCentre, bool inverted, float strength)
{
    hasGradient = isOn;
    isGradientFromCentre = fromCentre;
    isGradientInverted = inverted;
    gradientStrength = strength;
}

void Tovra_EnvelopeDisplay::setEnvelopePosition(int segment, float fraction)
{
    constexpr int blinkDraws = 3;
    if (segment > envelopePosition && envelopePosition >= 0 && envelopePosition < int(blinks.size()))
        blinks[size_t(envelopePosition)] = blinkDraws;
    const std::optional<CRect> former = dotPlace();
    envelopePosition = segment;
    positionFraction = fraction >= 0.0f && fraction <= 1.0f ? fraction : 0.0f;
    const std::optional<CRect> now = dotPlace();
    if (former == now)
        return;
    for (const std::optional<CRect>& place : {former, now})
        if (place)
            markPart(*place);
}

void Tovra_EnvelopeDisplay::markPart(CRect part)
{
    if (getFrame() == nullptr)
        return;
    getFrame()->localRectToFrameRect(this, part);
    getFrame()->addDirtyRect(part, this);
}

void Tovra_EnvelopeDisplay::updateEnvelopeState()
{
    if (stateSource == nullptr)
        return;
    float fraction = 0.0f;
    int segment = -1;
    stateSource->getEnvelopeState(fraction, segment);
    setEnvelopePosition(segment, fraction);
}

// Between values and places. Without a width or a height everything is at 0.

double Tovra_EnvelopeDisplay::convertTimeToX(const CEnvelopePoint*, float time) const
{
    const double shown = double(getDisplayTime()) * double(zoom);
    return shown > 0.0 ? double(time) / shown * inner.getWidth() : 0.0;
}

float Tovra_EnvelopeDisplay::convertXToTime(const CEnvelopePoint*, double x) const
{
    const double width = inner.getWidth();
    return width > 0.0 ? float(x / width * double(getDisplayTime()) * double(zoom)) : 0.0f;
}

double Tovra_EnvelopeDisplay::convertLevelToY(const CEnvelopePoint*, float level) const
{
    return (1.0 - double(level)) * inner.getHeight();
}

float Tovra_EnvelopeDisplay::convertYToLevel(const CEnvelopePoint*, double y) const
{
    const double height = inner.getHeight();
    return height > 0.0 ? float(1.0 - y / height) : 0.0f;
}

void Tovra_EnvelopeDisplay::getValueFromPoint(const CEnvelopePoint* point, const CPoint& where, float& time,
                                              float& level) const
{
    if (const Orbel::ParameterProperty* const property = point->levelProperty)
        level = float(property->denormalize(double(convertYToLevel(point, where.y))));
    if (point->timeProperty != nullptr)
        time = convertXToTime(point, where.x) - point->startTime;
}

// Places

void Tovra_EnvelopeDisplay::settle()
{
    if (isStale.exchange(false))
        preCalculateDraw(computePlaces | fitDisplayTime);
}

void Tovra_EnvelopeDisplay::preCalculateDraw(int what)
{
    if ((what & fitDisplayTime) != 0)
        fitTime();
    const CEnvelopePoint* before = nullptr;
    for (CEnvelopePoint& point : points)
        if (!point.isKnob())
        {
            calculatePointPosition(point, before, pointAt(point.next));
            before = &point;
        }
    for (size_t i = 0; i < points.size(); ++i) // after the points, since they read both neighbours
        if (points[i].isKnob())
            calculatePointPosition(points[i], pointAt(int(i) - 1), pointAt(points[i].next));
}

float Tovra_EnvelopeDisplay::totalTime() const
{
    float total = 0.0f;
    for (const CEnvelopePoint& point : points)
        if (!point.isKnob() && point.timeProperty != nullptr)
            total += point.timeProperty->getCurrentValue();
    return total;
}

void Tovra_EnvelopeDisplay::fitTime()
{
    constexpr float room = 50.0f;   // milliseconds
    constexpr double margin = 20.0; // units
    const float total = totalTime();
    if (!hasHysteresis)
    {
        displayTime = std::max(total + room, room) * tempoFactor();
        return;
    }
    const float shown = total * tempoFactor();
    const float near = convertXToTime(nullptr, margin);
    const float wide = convertXToTime(nullptr, getDeadZonePixelWidth());
    if (shown > getDisplayTime() - near)
        setDisplayTime((shown + near) / tempoFactor());
    else if (shown < getDisplayTime() - wide)
        setDisplayTime((shown + wide) / tempoFactor());
}

float Tovra_EnvelopeDisplay::timeOfPoint(const CEnvelopePoint& point) const
{
    const Orbel::ParameterProperty* const property = point.timeProperty;
    return property != nullptr ? property->getCurrentValue() * tempoFactor() : 0.0f;
}

CPoint Tovra_EnvelopeDisplay::absolute(const CPoint& place) const
{
    return {inner.left + place.x, inner.top + place.y};
}

// The handle of a point beyond the right edge stays at the edge, where it can be taken.
void Tovra_EnvelopeDisplay::calculatePointPosition(CEnvelopePoint& point, const CEnvelopePoint* before,
                                                   CEnvelopePoint* after)
{
    constexpr float knobPlace = 0.4f; // of its segment
    constexpr double knobInset = 3.0;
    if (point.isKnob())
    {
        point.curve = point.curveProperty->getCurrentValue();
        if (after != nullptr)
        {
            point.duration = after->duration;
            after->curve = point.curve;
        }
        point.place = curves.coordinate(before ? before->place : CPoint(), after ? after->place : CPoint(),
                                        point.curve, knobPlace);
    }
    else
    {
        point.duration = timeOfPoint(point);
        if (after != nullptr)
            after->startTime = point.startTime + point.duration;
        if (point.levelProperty != nullptr)
            point.level = point.levelProperty->getCurrentValue_normalized();
        point.place = {convertTimeToX(&point, point.startTime - timeOffset + point.duration),
                       convertLevelToY(&point, point.level)};
    }
    const CPoint middle = absolute({std::min(point.place.x, inner.getWidth()), point.place.y});
    const double inset = point.isKnob() ? knobInset : 0.0;
    const double halfWidth = handleWidth / 2.0 - inset, halfHeight = handleHeight / 2.0 - inset;
    point.handle =
        CRect(middle.x - halfWidth, middle.y - halfHeight, middle.x + halfWidth, middle.y + halfHeight);
}

// The element before a point that is none of the knobs.
const CEnvelopePoint* Tovra_EnvelopeDisplay::segmentStart(const CEnvelopePoint& point) const
{
    const auto index = point.previous;
    return index >= 0 && index < int(points.size()) ? &points[size_t(index)] : nullptr;
}
}
