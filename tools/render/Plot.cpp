// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/Plot.h"

#include "CORE/Numbers.h"
#include "CORE/Utf8.h"
#include "tools/common/Text.h"
#include "tools/render/PlotPicture.h"

#include <algorithm>
#include <cmath>

using namespace Tovra;

namespace lodex
{
namespace
{
constexpr int width = 1600;
constexpr int height = 900;
const CRect soundLane(84, 128, 1560, 540);
const CRect gainLane(84, 564, 1560, 804);
constexpr int mostColumns = 1476; // one for each pixel of a lane
constexpr double inset = 12.0;    // between a lane's edge and what is drawn in it

constexpr CColor ground{24, 24, 32, 255};
constexpr CColor laneColor{13, 14, 19, 255};
constexpr CColor guideColor{150, 150, 184, 34};
constexpr CColor beatColor{150, 150, 184, 50};
constexpr CColor barColor{180, 180, 212, 120};
constexpr CColor inputColor{58, 58, 80, 255};
constexpr CColor outputColor{168, 168, 198, 255};
constexpr CColor gainColor{242, 201, 76, 255};
constexpr CColor textColor{226, 226, 236, 255};
constexpr CColor dimTextColor{150, 150, 172, 255};

constexpr CColor faded(CColor color, unsigned char alpha)
{
    color.alpha = alpha;
    return color;
}

std::string inSeconds(double value, int decimals)
{
    return Core::formatFixed(value, decimals) + " s";
}

double yOfGain(double gain)
{
    return gainLane.bottom - inset - std::clamp(gain, 0.0, 1.0) * (gainLane.getHeight() - 2.0 * inset);
}
}

Plot::Plot(const Setup& described) : data(described, mostColumns) {}

std::vector<unsigned char> Plot::png() const
{
    PlotPicture picture(width, height, ground);
    for (const CRect& lane : {soundLane, gainLane})
        picture.fillRounded(lane, 6.0f, laneColor);
    drawSound(picture);
    drawGain(picture);
    drawBeats(picture);
    drawSeconds(picture);
    drawTitle(picture);
    drawKey(picture);
    return picture.png();
}

double Plot::xOfFrame(double frame) const
{
    return soundLane.left + frame / double(data.frames()) * soundLane.getWidth();
}

double Plot::xOfColumn(size_t column) const
{
    return soundLane.left + (double(column) + 0.5) / double(data.columns().size()) * soundLane.getWidth();
}

void Plot::drawTitle(PlotPicture& picture) const
{
    constexpr double roomForTitle = 1100.0;
    const PlotData::Setup& piece = data.setup();
    std::string title = piece.title;
    for (size_t kept = title.size(); picture.textWidth(title, PlotPicture::title) > roomForTitle;)
        title = std::string(Core::Utf8::cut(piece.title, --kept)) + "...";
    picture.text({soundLane.left, 56}, title, PlotPicture::title, textColor);

    std::string words = formatNumber(piece.tempo) + " BPM, a duck every " + piece.timeBase;
    if (piece.frames > data.frames())
        words += ", the first " + inSeconds(data.seconds(), 1) + " of " +
                 inSeconds(double(piece.frames) / piece.rate, 1);
    picture.text({soundLane.left, 82}, words, PlotPicture::label, dimTextColor);
}

void Plot::drawKey(PlotPicture& picture) const
{
    double x = soundLane.right;
    for (const auto& [name, color] :
         {std::pair("gain", gainColor), std::pair("output", outputColor), std::pair("input", inputColor)})
    {
        picture.text({x, 56}, name, PlotPicture::label, textColor, kTextRight);
        x = std::round(x - picture.textWidth(name, PlotPicture::label)) - 10.0;
        picture.fillRounded({x - 14.0, 44.0, x, 58.0}, 3.0f, color);
        x -= 38.0;
    }
}

// Over the full height of each lane, bars stronger than beats; a label where there is room for it.
void Plot::drawBeats(PlotPicture& picture) const
{
    constexpr double roomForLine = 8.0;
    constexpr double roomForLabel = 44.0;
    double lastLine = -double(width), lastLabel = lastLine;
    for (const PlotData::Beat& beat : data.beats())
    {
        const double x = xOfFrame(beat.frame);
        const int64_t inBar = ((beat.number % 4) + 4) % 4;
        const bool isBar = inBar == 0;
        if (!isBar && x - lastLine < roomForLine)
            continue;
        lastLine = x;
        for (const CRect& lane : {soundLane, gainLane})
            picture.vertical(x, lane.top, lane.bottom, isBar ? barColor : beatColor);
        if (x - lastLabel < roomForLabel)
            continue;
        lastLabel = x;
        const int64_t barNumber = (beat.number - inBar) / 4 + 1;
        picture.text({x, soundLane.top - 10}, std::to_string(barNumber) + '.' + std::to_string(inBar + 1),
                     PlotPicture::label, isBar ? textColor : dimTextColor, kTextCenter);
    }
}

void Plot::drawSeconds(PlotPicture& picture) const
{
    constexpr double mostLabels = 14.0;
    double step = 1.0e-6; // then 2, 5, 10, 20 ... of these
    int decimals = 6;
    for (int i = 0; data.seconds() / step > mostLabels; ++i)
    {
        step *= i % 3 == 1 ? 2.5 : 2.0;
        decimals = std::max(0, 6 - (i + 1) / 3);
    }
    for (int i = 0; i * step <= data.seconds() * 1.000001; ++i)
    {
        const double x = xOfFrame(i * step * data.setup().rate);
        picture.vertical(x, gainLane.bottom + 8, gainLane.bottom + 14, dimTextColor);
        picture.text({x, gainLane.bottom + 34}, i == 0 ? "0" : inSeconds(i * step, decimals),
                     PlotPicture::label, dimTextColor, kTextCenter);
    }
}

template <typename Reach>
std::vector<CPoint> Plot::area(Reach reach) const
{
    const double middle = soundLane.center().y;
    std::vector<CPoint> upper, lower; // at least a pixel apart
    for (size_t i = 0; i < data.columnsSeen(); ++i)
    {
        const auto [up, down] = reach(data.columns()[i]);
        upper.push_back({xOfColumn(i), middle - up - 0.5});
        lower.push_back({xOfColumn(i), middle + down + 0.5});
    }
    upper.insert(upper.end(), lower.rbegin(), lower.rend());
    return upper;
}

// The output is brighter where most of it is: within its effective value.
void Plot::drawSound(PlotPicture& picture) const
{
    const float highest = data.peak();
    const double scale = highest > 0.0f ? (soundLane.getHeight() / 2.0 - inset) / highest : 0.0;
    const auto peaks = [scale](const PlotData::Extent& of)
    { return std::pair(of.high * scale, -of.low * scale); };
    const auto body = [&](const PlotData::Extent& of)
    {
        const auto [up, down] = peaks(of);
        return std::pair(std::min(of.effective() * scale, up), std::min(of.effective() * scale, down));
    };
    using Column = PlotData::Column;
    picture.fill(area([&](const Column& column) { return peaks(column.input); }), inputColor);
    picture.fill(area([&](const Column& column) { return peaks(column.output); }), faded(outputColor, 150));
    picture.fill(area([&](const Column& column) { return body(column.output); }), outputColor);
}

// Through the lowest and the highest gain of each column, the shorter way.
std::vector<CPoint> Plot::gainLine() const
{
    const double half = xOfColumn(0) - gainLane.left;
    std::vector<CPoint> line;
    for (size_t i = 0; i < data.columnsSeen(); ++i)
    {
        double first = yOfGain(data.columns()[i].gain.low), second = yOfGain(data.columns()[i].gain.high);
        if (!line.empty() && std::abs(line.back().y - second) < std::abs(line.back().y - first))
            std::swap(first, second);
        line.push_back({xOfColumn(i) - half, first});
        line.push_back({xOfColumn(i) + half, second});
    }
    return line;
}

void Plot::drawGain(PlotPicture& picture) const
{
    for (int percent : {0, 25, 50, 75, 100})
    {
        const double y = yOfGain(percent / 100.0);
        picture.horizontal(gainLane.left, gainLane.right, y, guideColor);
        if (percent % 50 == 0)
            picture.text({gainLane.left - 12, y + 6}, std::to_string(percent) + "%", PlotPicture::label,
                         dimTextColor, kTextRight);
    }
    const std::vector<CPoint> line = gainLine();
    if (line.empty())
        return;
    std::vector<CPoint> below = line;
    below.push_back({line.back().x, yOfGain(0.0)});
    below.push_back({line.front().x, yOfGain(0.0)});
    picture.fillFading(below, yOfGain(1.0), faded(gainColor, 96), yOfGain(0.0), faded(gainColor, 10));
    picture.stroke(line, 2.0, gainColor);
}
}
