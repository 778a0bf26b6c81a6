// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/Tovra_AnimKnob.h"

#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/PelmoAGG.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Tovra
{
// Two pictures of the strip, mixed in memory of their own: adding them there leaves no seam, which drawing
// one over the other would.
class Tovra_AnimKnob::MixedPicture
{
public:
    MixedPicture() { context->setAGGRenderer(&renderer); }
    ~MixedPicture()
    {
        context->setAGGRenderer(nullptr);
        context->forget();
    }
    MixedPicture(const MixedPicture&) = delete;

    void fit(const CPoint& extent, double scale)
    {
        const auto pixels = [scale](double units)
        { return unsigned(std::clamp(std::ceil(units * scale), 1.0, 4096.0)); };
        if (memory.getWidth() == pixels(extent.x) && memory.getHeight() == pixels(extent.y) &&
            renderer.scale() == scale)
            return;
        memory.setSize(pixels(extent.x), pixels(extent.y));
        renderer.scale(scale);
        renderer.attach(memory.getPixelPtr(), memory.getWidth(), memory.getHeight(), memory.getRowBytes());
        image.attach(memory.getPixelPtr(), memory.getWidth(), memory.getHeight(), memory.getRowBytes(),
                     scale);
        // A bitmap leaves out the last row and column of the clip.
        context->setClipRect(CRect(0.0, 0.0, extent.x + 1.0, extent.y + 1.0));
    }

    // between: from 0 for the first of both to 255.
    void mix(CBitmap& strip, const CRect& part, const CPoint& first, double heightOfOne, int between)
    {
        renderer.clearAll(0, 0, 0, 0);
        strip.drawAlphaBlend(context, part, first, static_cast<unsigned char>(255 - between));
        if (between == 0)
            return;
        renderer.blendMode(kBlendPlus);
        strip.drawAlphaBlend(context, part, CPoint(first.x, first.y + heightOfOne),
                             static_cast<unsigned char>(between));
        renderer.blendMode(kBlendAlpha);
    }

    const PelmoAGG::Image& result() const { return image; }

private:
    CMACBitmap memory;
    PelmoAGG renderer;
    PelmoAGG::Image image;
    CDrawContext* const context = new CDrawContext();
};

Tovra_AnimKnob::Tovra_AnimKnob(const CRect& rect, CControlListener* heardBy, long withTag, int number,
                               double height, CBitmap* bitmap, const CPoint& offset,
                               Orbel::ParameterProperty* property)
    : CAnimKnob(rect, heardBy, property != nullptr ? property->getParameterID() : withTag, number, height,
                bitmap, offset),
      hitRadius(int(rect.getWidth() * 0.5)),
      picture(std::make_unique<MixedPicture>())
{
    Tovra_AnimKnob::setAttachedProperty(property);
}

Tovra_AnimKnob::Tovra_AnimKnob(const Tovra_AnimKnob& other)
    : CAnimKnob(other),
      hitRadius(other.hitRadius),
      steps(other.steps),
      isCircular(other.isCircular),
      isEased(other.isEased),
      easedValue(other.easedValue),
      picture(std::make_unique<MixedPicture>())
{
}

Tovra_AnimKnob::~Tovra_AnimKnob() = default;

bool Tovra_AnimKnob::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "Tovra_AnimKnob") == 0) || CAnimKnob::isTypeOf(name);
}

void Tovra_AnimKnob::setSteps(int count)
{
    steps = count >= 2 ? count : 0;
}

// Within a gesture nothing glides: the dial lies under the mouse.
void Tovra_AnimKnob::writeValue()
{
    Orbel::ParameterProperty* const property = getAttachedProperty();
    if (steps == 0)
    {
        easedValue = value;
        return CAnimKnob::writeValue();
    }
    const float step = std::floor(value * float(steps - 1) + 0.5f);
    value = step / float(steps - 1);
    easedValue = value;
    if (property != nullptr)
        property->setValue(this, property->getMin() + step);
}

// A notch is at least one step.
float Tovra_AnimKnob::changeBy(const ValueStep& step) const
{
    return steps == 0 ? CAnimKnob::changeBy(step)
                      : step.notches * std::max(getWheelInc(), 1.0f / float(steps - 1));
}

MouseEventResult Tovra_AnimKnob::onMouseDown(CPoint& where, const long& buttons)
{
    const Kept<CView> self(this);
    const MouseEventResult result = CAnimKnob::onMouseDown(where, buttons);
    if (result == kMouseHandledNoMoves)
        easedValue = value;
    return result;
}

bool Tovra_AnimKnob::hitTest(const CPoint& where, long buttons)
{
    if (!CAnimKnob::hitTest(where, buttons))
        return false;
    const CPoint away = where - size.center();
    return !isCircular || std::hypot(away.x, away.y) <= hitRadius;
}

float Tovra_AnimKnob::positionOf(const Orbel::ParameterProperty& property) const
{
    if (steps == 0)
        return property.getCurrentValue_normalized();
    return std::floor(property.getCurrentValue() - property.getMin() + 0.5f) / float(steps - 1);
}

void Tovra_AnimKnob::setAttachedProperty(Orbel::ParameterProperty* property)
{
    CAnimKnob::setAttachedProperty(property);
    easedValue = value;
}

void Tovra_AnimKnob::parameterChanged(Orbel::ParameterProperty* property)
{
    CAnimKnob::parameterChanged(property);
    if (steps != 0 && property != nullptr && property == getAttachedProperty())
        value = positionOf(*property);
}

// Whether it still has some way to go.
bool Tovra_AnimKnob::glide()
{
    constexpr double closeEnough = 0.001;
    constexpr double noSubnormals = 1e-19;
    const double way = double(value) - easedValue;
    if (!isEased || std::fabs(way) <= closeEnough)
    {
        easedValue = value;
        return false;
    }
    easedValue = float(easedValue + gFadetime * way + noSubnormals);
    return true;
}

bool Tovra_AnimKnob::isDirty() const
{
    return CAnimKnob::isDirty() || (isEased && easedValue != value);
}

void Tovra_AnimKnob::draw(CDrawContext* context)
{
    setDirty(glide());
    noteHandle();
    drawPosition(context);
    drawFocus(context);
}

void Tovra_AnimKnob::drawPosition(CDrawContext* context)
{
    constexpr unsigned disabledAlpha = 60;
    CBitmap* const strip = getBackground();
    PelmoAGG* const renderer = context->getAGGRenderer();
    if (strip == nullptr || renderer == nullptr)
        return;
    const double shown = std::clamp(double(easedValue), 0.0, 1.0) * (getNumberOfImages() - 1);
    const int first = int(shown);
    const CPoint from(getBackOffset().x, getBackOffset().y + first * heightOfOneImage);
    picture->fit(size.getSize(), renderer->scale());
    picture->mix(*strip, CRect(0.0, 0.0, size.getWidth(), size.getHeight()), from, heightOfOneImage,
                 int((shown - first) * 255.0));
    const CPoint at = size.getTopLeft() + context->getOffset();
    renderer->blendImage(picture->result(), at.x, at.y, isEnabled() ? 255 : disabledAlpha);
}
}
