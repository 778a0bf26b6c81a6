// SPDX-License-Identifier: GPL-3.0-or-later
// Draws any polygon, with the colours or the gradient that are set in the renderer.
//
// The path is built in the renderer: there can be only one at a time, and nothing else may be drawn before
// finish. [window thread]
#pragma once

#include "Tovrane/draw/CDrawContext.h"

namespace Tovra
{
class CDrawPath
{
public:
    // Uses the present offset of the context, whose renderer has to outlive the path. alpha is 0 to 255.
    // Without a renderer nothing is drawn.
    explicit CDrawPath(CDrawContext* context, unsigned int alpha = 255);

    void moveTo(float x, float y);
    void lineTo(float x, float y);
    // Closes the polygon that began at the last moveTo.
    void closePath();
    // Fills for kFilled, strokes for kStroked, does both for any other style. alpha is the renderer's master
    // alpha meanwhile, which does not change colours and gradients that were set before. The flag is not
    // used.
    void finish(CDrawStyle style, bool);

    void setAlpha(unsigned int newAlpha) { alpha = newAlpha; }

private:
    double offsetX;
    double offsetY;
    PelmoAGG* renderer;
    unsigned int alpha;
};
}
