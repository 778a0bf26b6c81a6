// SPDX-License-Identifier: GPL-3.0-or-later
// One point of an envelope, or the knob that bends the segment before a point. [window thread]
#pragma once

#include "Tovrane/base/CPoint.h"
#include "Tovrane/base/CRect.h"
#include "Tovrane/views/controls/ValueDrag.h"

namespace Orbel
{
class ParameterProperty;
}

namespace Tovra
{
struct CEnvelopePoint
{
    enum Type : int
    {
        fixed = 0,      // part of the curve, without a handle
        curveKnob = 1,  // made by addEnvelopePoint
        free = 2,       // moved in time and level
        fixedLevel = 3, // moved in time alone
        fixedTime = 4   // moved in level alone
    };

    Type type = fixed;
    // What a drag writes; each may be null. The time is a duration from the point before.
    Orbel::ParameterProperty* timeProperty = nullptr;
    Orbel::ParameterProperty* levelProperty = nullptr;
    Orbel::ParameterProperty* curveProperty = nullptr; // the bend of the segment that ends here
    float snapTime = 0.0f;                             // pulls a drag, in milliseconds
    bool snapTimeOn = false;
    float snapLevel = 0.0f; // normalised
    bool snapLevelOn = false;
    float fineFactor = 1.0f; // of a fine drag of the level; below 0 where up is less

    // Of a curve knob.
    float bend = 0.0f; // of its way; 0 for linear
    DeadZone deadZone;
    float direction = 0.0f; // 1 or -1: which way up bends it; 0 and the segment's slope decides

    // Computed.
    CPoint place; // relative to the inner rectangle
    CRect handle; // absolute
    float curve = 0.0f;
    int previous = -1; // indices of neighbours, -1 for none
    int next = -1;
    float startTime = 0.0f; // milliseconds, as they are shown
    float duration = 0.0f;
    float level = 0.0f; // normalised

    bool isKnob() const { return type == curveKnob; }
};
}
