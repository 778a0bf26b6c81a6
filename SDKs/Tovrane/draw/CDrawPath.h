// A free polygon, drawn with the colours or the gradient that the renderer holds and an alpha of its own.
//
// It is built in the renderer itself: one at a time, and nothing else may be drawn before finish.
// [window thread]
#pragma once

#include "Tovrane/draw/CDrawContext.h"

namespace Tovra
{
class CDrawPath
{
public:
    // Takes the offset that the context has now; the context's renderer has to outlive the path. alpha is 0
    // to 255. Without a renderer nothing happens.
    explicit CDrawPath(CDrawContext* context, unsigned int alpha = 255);

    void moveTo(float x, float y);
    void lineTo(float x, float y);
    // Back to where this part of the path began.
    void closePath();
    // Fills for kFilled, strokes for kStroked, does both for any other style. Colours and gradients that
    // are set already keep the alpha that they were set with. The flag is not used.
    void finish(CDrawStyle style, bool);

    void setAlpha(unsigned int newAlpha) { alpha = newAlpha; }

private:
    double offsetX;
    double offsetY;
    PelmoAGG* renderer;
    unsigned int alpha;
};
}
