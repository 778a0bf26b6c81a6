// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/tree/KeptGround.h"

#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/views/tree/CFrame.h"

#include <cmath>
#include <cstring>

namespace Tovra
{
namespace
{
constexpr double roundingError = 1e-6; // of coordinates in pixels
constexpr std::size_t pixelBytes = 4;
constexpr std::size_t alphaByte = 3;

bool isWhole(double pixels)
{
    return std::fabs(pixels - std::round(pixels)) < roundingError;
}

bool areWhole(const CRect& pixels)
{
    return isWhole(pixels.left) && isWhole(pixels.top) && isWhole(pixels.right) && isWhole(pixels.bottom);
}

CRect scaled(const CRect& rect, double scale)
{
    return {rect.left * scale, rect.top * scale, rect.right * scale, rect.bottom * scale};
}

void attach(PelmoAGG& renderer, IOSBitmap& bitmap)
{
    renderer.attach(bitmap.getPixelPtr(), bitmap.getWidth(), bitmap.getHeight(), bitmap.getRowBytes());
}
}

bool KeptGround::paint(CFrame& frame, CDrawContext& context, Content wanted,
                       const std::function<void()>& drawBackground, const std::function<void()>& drawChildren)
{
    PelmoAGG& renderer = *frame.getRenderer();
    IOSBitmap& target = *frame.getFrameBitmap();
    // Within the picture of a ground that is being made there is no other one.
    if (context.getAGGRenderer() != &renderer || !renderer.drawsInto(target.getPixelPtr()) ||
        renderer.masterAlpha() != 1.0 || renderer.blendMode() != kBlendAlpha)
        return false;
    const CDrawContext::ClipState state = context.saveClip();
    const double scale = frame.getScale();
    CRect pixels = scaled(state.viewClip, scale);
    if (!areWhole(pixels) || !(state.clip == state.viewClip))
        return false;
    pixels = {std::round(pixels.left), std::round(pixels.top), std::round(pixels.right),
              std::round(pixels.bottom)};
    pixels.bound({0.0, 0.0, double(target.getWidth()), double(target.getHeight())});
    wanted.fullPaints = frame.countFullPaints();
    wanted.scale = scale;
    wanted.offset = context.getOffset();
    wanted.clip = state.clip;
    wanted.pixels = pixels;
    if (!isMade || !(wanted == content))
    {
        content = std::move(wanted);
        isMade = true;
        isUsable = make(frame, context, drawBackground, drawChildren);
    }
    if (isUsable)
        copyTo(frame, state.limit);
    return isUsable;
}

// The frame's own renderer draws, since views may know it from the frame.
bool KeptGround::make(CFrame& frame, CDrawContext& context, const std::function<void()>& drawBackground,
                      const std::function<void()>& drawChildren)
{
    IOSBitmap& target = *frame.getFrameBitmap();
    if (!picture.setSize(target.getWidth(), target.getHeight()))
        return false;
    const CDrawContext::ClipState saved = context.saveClip();
    attach(*frame.getRenderer(), picture);
    context.restoreClip({saved.clip, saved.viewClip, content.pixels});
    drawBackground();
    const bool hides = isOpaque();
    if (hides)
        drawChildren();
    attach(*frame.getRenderer(), target);
    context.restoreClip(saved);
    return hides;
}

// The picture was empty, and an opaque pixel stays opaque.
bool KeptGround::isOpaque() const
{
    const CRect& part = content.pixels;
    const auto* const first = const_cast<CMACBitmap&>(picture).getPixelPtr();
    for (auto y = std::size_t(part.top); y < std::size_t(part.bottom); ++y)
        for (auto x = std::size_t(part.left); x < std::size_t(part.right); ++x)
            if (first[y * std::size_t(picture.getRowBytes()) + x * pixelBytes + alphaByte] != 255)
                return false;
    return !part.isEmpty();
}

void KeptGround::copyTo(CFrame& frame, const CRect& limit)
{
    IOSBitmap& target = *frame.getFrameBitmap();
    CRect part = limit;
    if (part.bound(content.pixels).isEmpty())
        return;
    const auto bytes = std::size_t(part.getWidth()) * pixelBytes;
    const auto start = std::ptrdiff_t(part.left) * std::ptrdiff_t(pixelBytes);
    for (auto y = std::ptrdiff_t(part.top); y < std::ptrdiff_t(part.bottom); ++y)
        std::memcpy(target.getPixelPtr() + y * target.getRowBytes() + start,
                    picture.getPixelPtr() + y * picture.getRowBytes() + start, bytes);
}
}
