// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/display/CEnvelopeDisplaySingle.h"

#include "DSP/dsp_Math.h"
#include "Orbel/parameters/ParameterText.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/views/tree/CFrame.h"
#include "effect/parameters/DKS_Mini.h"
#include "effect/parameters/TimeAdjust.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

using namespace Tovra;
using DSP::Math::getBeatTime_ms;

namespace
{
constexpr float storedTempo = 128.0f; // of the parameters' times
constexpr int quarterNote = 5;        // of getBeatTime_ms
constexpr int eighthNote = 6;
constexpr int endPointIndex = 5; // [start] [knob] attack, hold, [knob] release
const char* const gtime_mode_suffix[] = {"", "T", "D"};

int indexOf(float beats)
{
    const float* const end = gTimeAdjustMultiplier + gNumTimeAdjustEntries;
    const float* const found = std::find(gTimeAdjustMultiplier, end, beats);
    return found == end ? -1 : int(found - gTimeAdjustMultiplier);
}
}

void CEnvelopeDisplaySingle::CInfo::createObject()
{
    object = new CEnvelopeDisplaySingle(*this);
}

CEnvelopeDisplaySingle::CEnvelopeDisplaySingle(const CInfo& info)
    : Tovra_EnvelopeDisplay(info), scopeRenderer(info.scopeRenderer)
{
    setCurveType(1); // the powers that the ducker has
    setDisplayCurveKnobs(false);
    if (info.propertyManager != nullptr)
        addPoints(*info.propertyManager);
    setTimeAdjust(info.timeAdjust != nullptr ? *info.timeAdjust : 1.0f);
}

void CEnvelopeDisplaySingle::addPoints(const Orbel::CPropertyManager& manager)
{
    using namespace DKS_Mini;
    CEnvelopePoint start, attack, hold, release;
    attack.type = hold.type = release.type = CEnvelopePoint::free;
    attack.timeProperty = manager.getPropertyByID(kAttackTime);
    attack.curveProperty = manager.getPropertyByID(kAttackCurve);
    attack.levelProperty = hold.levelProperty = manager.getPropertyByID(kStrength);
    attack.fineFactor = hold.fineFactor = -1.0f; // up is less
    attack.direction = 1.0f;
    hold.timeProperty = manager.getPropertyByID(kHoldTime);
    release.timeProperty = manager.getPropertyByID(kReleaseTime);
    release.curveProperty = manager.getPropertyByID(kReleaseCurve);
    release.direction = -1.0f;
    release.snapTime = getBeatTime_ms(storedTempo, quarterNote);
    release.snapTimeOn = true;
    for (const CEnvelopePoint& point : {start, attack, hold, release})
        addEnvelopePoint(point);
}

bool CEnvelopeDisplaySingle::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "CEnvelopeDisplaySingle") == 0) ||
           Tovra_EnvelopeDisplay::isTypeOf(name);
}

void CEnvelopeDisplaySingle::setTimeAdjust(float beats)
{
    timeAdjust = beats;
    timeAdjustIndex = indexOf(beats);
    setDirty(true);
}

// The end point snaps to the note value that the release is nearer to.
void CEnvelopeDisplaySingle::parameterChanged(Orbel::ParameterProperty* property)
{
    if (property != nullptr && property->getParameterID() == DKS_Mini::kReleaseTime)
    {
        const float time = property->getCurrentValue();
        const float quarter = std::fabs(getBeatTime_ms(storedTempo, quarterNote) - time);
        const float eighth = std::fabs(getBeatTime_ms(storedTempo, eighthNote) - time);
        beatDivision = quarter > eighth ? eighthNote : quarterNote;
    }
    Tovra_EnvelopeDisplay::parameterChanged(property);
}

void CEnvelopeDisplaySingle::preCalculateDraw(int)
{
    setDisplayTime(0.0f);
    if (CEnvelopePoint* const end = getEnvelopePointFromIndex(endPointIndex))
        end->snapTime = getBeatTime_ms(getTempo(), beatDivision);
    Tovra_EnvelopeDisplay::preCalculateDraw(computePlaces);
}

// Two quarter notes, whatever is asked for.
void CEnvelopeDisplaySingle::setDisplayTime(float)
{
    Tovra_EnvelopeDisplay::setDisplayTime(2.0f * getBeatTime_ms(getTempo(), quarterNote));
}

float CEnvelopeDisplaySingle::getDisplayTime() const
{
    const float stored = Tovra_EnvelopeDisplay::getDisplayTime();
    return isTempoSynced() ? Orbel::getTimeScaledToTempo128(stored, getTempo()) : stored;
}

double CEnvelopeDisplaySingle::convertTimeToX(const CEnvelopePoint*, float time) const
{
    const float shown = getDisplayTime();
    return shown > 0.0f ? double(time / shown) * innerRect().getWidth() : 0.0;
}

float CEnvelopeDisplaySingle::convertXToTime(const CEnvelopePoint*, double x) const
{
    const double width = innerRect().getWidth();
    return width > 0.0 ? float(x / width) * getDisplayTime() : 0.0f;
}

float CEnvelopeDisplaySingle::convertYToLevel(const CEnvelopePoint*, double y) const
{
    const double height = innerRect().getHeight();
    return height > 0.0 ? float(y / height) : 0.0f;
}

double CEnvelopeDisplaySingle::convertLevelToY(const CEnvelopePoint*, float level) const
{
    return double(level) * innerRect().getHeight();
}

// To the nearest sixteenth, but never to none.
void CEnvelopeDisplaySingle::checkSnapTime(const CEnvelopePoint* point, float& time)
{
    constexpr double reach = 8.0; // units
    const float step = float(60.0 / double(getTempo()) * 250.0);
    const float at = point->startTime + time;
    const float steps = at / step;
    int whole = int(steps);
    if (steps - float(whole) > 0.5f)
        ++whole;
    const float snapped = float(whole) * step;
    if (isTempoSynced() && whole > 0 && std::fabs(snapped - at) < convertXToTime(point, reach))
        time = snapped - point->startTime;
}

std::string CEnvelopeDisplaySingle::readoutOf(const CEnvelopePoint* point) const
{
    const auto textOf = [](Orbel::ParameterProperty* property, bool valueOnly)
    {
        char text[Orbel::kParameterTextSize] = {};
        Orbel::renderPropertyText(property, text, valueOnly, true, true);
        return std::string(text);
    };
    if (point == nullptr)
        return {};
    if (point->timeProperty != nullptr && point->levelProperty != nullptr)
        return textOf(point->timeProperty, true) + " / " + textOf(point->levelProperty, true);
    return textOf(point->timeProperty != nullptr ? point->timeProperty : point->curveProperty, false);
}

// The audio

void CEnvelopeDisplaySingle::followAudio()
{
    if (getFrame() == nullptr || !isVisible())
        return;
    updateEnvelopeState();
    if (scopeRenderer == nullptr)
        return;
    for (const CNewScopeRenderer::Columns& each : scopeRenderer->fetch())
        markPart({innerRect().left + each.first, innerRect().top - 1.0, innerRect().left + each.last,
                  innerRect().bottom + 1.0});
}

// The picture

void CEnvelopeDisplaySingle::draw(CDrawContext* context)
{
    if (scopeRenderer != nullptr)
    {
        const CDrawContext::ClipState all = context->saveClip();
        context->enterView(innerRect());
        scopeRenderer->renderScope(context, innerRect());
        context->restoreClip(all);
    }
    Tovra_EnvelopeDisplay::draw(context);
}

// Of a line so many quarters of a cycle behind its trigger, 1 to 4. Three quarters are the dotted half; of a
// triplet they are a plain note, and of a dotted note they have no name.
std::string CEnvelopeDisplaySingle::labelOf(int quarters) const
{
    constexpr int noteOfPlainRow[] = {7, 6, 5, 4, 3}; // the resolutions of 1/16 to 1 Bar
    constexpr int smaller[] = {0, 2, 1, 1, 0};        // by halves, for so many quarters
    const char* const ofThree[] = {"D", "", nullptr};
    if (timeAdjustIndex < 0)
    {
        char text[32];
        std::snprintf(text, sizeof text, "%.4g", double(timeAdjust) * quarters / 4.0);
        return text;
    }
    const int row = timeAdjustIndex / gNumSingleTimeAdjustEntries;
    const int note = noteOfPlainRow[timeAdjustIndex % gNumSingleTimeAdjustEntries] + smaller[quarters];
    const char* const suffix = quarters == 3 ? ofThree[row] : gtime_mode_suffix[row];
    return suffix != nullptr ? std::string(DSP::Math::getBeatTimeString(note)) + suffix : std::string();
}

void CEnvelopeDisplaySingle::drawGridX(CDrawContext* context, const CRect& rect)
{
    constexpr int cycle = 4, lines = 2 * cycle; // quarters
    constexpr double labelHeight = 12.0, labelWidth = 50.0;
    context->setLineWidth(0.3);
    context->setFrameColor(kDisplayColor2);
    context->setFont(kNormalFont, 9.0, 0);
    context->setFontColor(kDisplayTextColorDARK);
    for (int i = 1; i < lines; ++i)
    {
        const double x = std::floor(rect.left + rect.getWidth() * i / lines) + 0.5;
        context->line(x, rect.top, x, rect.bottom);
        context->drawString(
            labelOf((i - 1) % cycle + 1).c_str(),
            {x - labelWidth / 2.0, rect.bottom, x + labelWidth / 2.0, rect.bottom + labelHeight});
    }
}

// What stands at the lines is the gain.
void CEnvelopeDisplaySingle::drawGridY(CDrawContext* context, const CRect& rect)
{
    constexpr double indent = 5.0, labelHeight = 12.0, labelWidth = 50.0;
    constexpr float levels[] = {0.0f, 0.25f, 0.5f, 0.75f};
    context->setFont(kNormalFont, 9.0, 0);
    context->setFontColor(kDisplayTextColorDARK);
    context->setLineWidth(0.5);
    context->setFrameColor(kDisplayColor1);
    for (const float level : levels)
    {
        const double y = std::floor(rect.top + convertLevelToY(nullptr, level)) + 0.5;
        context->line(rect.left + 1.0, y, rect.right - 1.0, y);
        char text[16];
        std::snprintf(text, sizeof text, "%i%%", int((1.0f - level) * 100.0f));
        context->drawString(text, {rect.left + indent, y + 1.0, rect.left + labelWidth, y + labelHeight},
                            true, kTextLeft);
    }
}
