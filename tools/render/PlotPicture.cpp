// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/PlotPicture.h"

#include "Tovrane/draw/AggColor.h"
#include "Tovrane/draw/CDrawPath.h"
#include "Tovrane/draw/PNGWriter.h"
#include "tools/common/ToolError.h"

#include <cmath>

using namespace Tovra;

namespace lodex
{
PlotPicture::PlotPicture(int width, int height, CColor ground)
    : context({&renderer, &bitmap, CRect(0.0, 0.0, width, height)}, nullptr),
      fonts{{"arialbd.ttf", nullptr, 22.0, kFontCacheGrey}, {"arial.ttf", nullptr, 15.0, kFontCacheGrey}}
{
    bitmap.setSize(unsigned(width), unsigned(height));
    renderer.attach(bitmap.getPixelPtr(), bitmap.getWidth(), bitmap.getHeight(), bitmap.getRowBytes());
    context.resetClipRect();
    renderer.textHints(kAutoHints);
    renderer.clearAll(ground.red, ground.green, ground.blue, ground.alpha);
}

void PlotPicture::fill(const Points& outline, CColor color)
{
    context.setFillColor(color);
    fill(outline);
}

void PlotPicture::fill(const Points& outline)
{
    if (outline.empty())
        return;
    CDrawPath path(&context);
    path.moveTo(float(outline.front().x), float(outline.front().y));
    for (const CPoint& point : outline)
        path.lineTo(float(point.x), float(point.y));
    path.closePath();
    path.finish(kFilled, false);
}

void PlotPicture::fillFading(const Points& outline, double y1, CColor color1, double y2, CColor color2)
{
    renderer.fillLinearGradient(0.0, y1, 0.0, y2, aggColorFromCColor(color1), aggColorFromCColor(color2),
                                1.0);
    fill(outline);
}

void PlotPicture::fillRounded(const CRect& rect, float radius, CColor color)
{
    context.setFillColor(color);
    context.drawRoundRect(rect, radius, kFilled);
}

// A turn by more than 120 degrees, where a mitred corner would stick out far.
static bool isSharp(const CPoint& before, const CPoint& corner, const CPoint& after)
{
    const CPoint in = corner - before, out = after - corner;
    return in.x * out.x + in.y * out.y < -0.5 * std::hypot(in.x, in.y) * std::hypot(out.x, out.y);
}

void PlotPicture::stroke(const Points& line, double lineWidth, CColor color)
{
    if (line.empty())
        return;
    context.setFrameColor(color);
    context.setLineWidth(lineWidth);
    CDrawPath path(&context);
    path.moveTo(float(line.front().x), float(line.front().y));
    for (size_t i = 1; i < line.size(); ++i)
    {
        const auto x = float(line[i].x), y = float(line[i].y);
        path.lineTo(x, y);
        if (i + 1 < line.size() && isSharp(line[i - 1], line[i], line[i + 1]))
            path.moveTo(x, y);
    }
    path.finish(kStroked, false);
}

void PlotPicture::vertical(double x, double top, double bottom, CColor color)
{
    stroke({{std::floor(x) + 0.5, top}, {std::floor(x) + 0.5, bottom}}, 1.0, color);
}

void PlotPicture::horizontal(double left, double right, double y, CColor color)
{
    stroke({{left, std::floor(y) + 0.5}, {right, std::floor(y) + 0.5}}, 1.0, color);
}

double PlotPicture::textWidth(const std::string& words, Type type)
{
    context.setFont(&fonts[type], 0.0, 0);
    return context.getStringWidth(words.c_str());
}

void PlotPicture::text(CPoint baseline, const std::string& words, Type type, CColor color,
                       CHoriTxtAlign align)
{
    const double share = align == kTextLeft ? 0.0 : align == kTextCenter ? 0.5 : 1.0;
    const double left = std::round(baseline.x - share * textWidth(words, type));
    renderer.textAlignment(kAlignLeftOrBottom, kAlignLeftOrBottom);
    context.setFrameColor(color);
    renderer.text(left, std::round(baseline.y), words.c_str(), false, 0.0, 0.0);
}

std::vector<unsigned char> PlotPicture::png()
{
    std::vector<unsigned char> file = writePNG(bitmap);
    if (file.empty())
        throw ToolError("there is not enough memory for the picture");
    return file;
}
}
