#include "tools/render/Plot.h"

#include "CORE/Numbers.h"
#include "tools/common/Text.h"

#include <algorithm>
#include <cmath>

namespace lodex
{
namespace
{
constexpr int width = 1600;
constexpr int height = 900;
constexpr Box soundLane{84, 128, 1560, 540};
constexpr Box gainLane{84, 564, 1560, 804};
constexpr double inset = 12.0; // between a lane's edge and what is drawn in it
constexpr int mostColumns = int(soundLane.right - soundLane.left);
constexpr double soundMiddle = (soundLane.top + soundLane.bottom) / 2.0;
constexpr double mostBeats = 8.0;
constexpr double mostSeconds = 16.0;

constexpr Colour background{15, 18, 25};
constexpr Colour laneColour{22, 26, 36};
constexpr Colour guideColour{120, 138, 175, 28};
constexpr Colour beatColour{120, 138, 175, 46};
constexpr Colour barColour{150, 168, 205, 110};
constexpr Colour inputColour{58, 70, 98};
constexpr Colour outputColour{92, 205, 196};
constexpr Colour gainColour{246, 178, 107};
constexpr Colour textColour{214, 221, 233};
constexpr Colour dimTextColour{126, 138, 160};

constexpr Colour faded(Colour colour, uint8_t alpha)
{
    return {colour.red, colour.green, colour.blue, alpha};
}

std::string seconds(double value, int decimals)
{
    return Core::formatFixed(value, decimals) + " s";
}
}

Plot::Plot(const Setup& described) : setup(described)
{
    const double shown = std::min(mostBeats * 60.0 / setup.tempo, mostSeconds);
    window = std::max<int64_t>(1, std::llround(shown * setup.rate));
    if (setup.frames >= 0)
        window = std::clamp<int64_t>(setup.frames, 1, window);
    columns.resize(size_t(std::min<int64_t>(mostColumns, window)));
}

void Plot::Extent::add(float sample)
{
    if (!std::isfinite(sample))
        return;
    low = count > 0 ? std::min(low, sample) : sample;
    high = count > 0 ? std::max(high, sample) : sample;
    squares += double(sample) * sample;
    ++count;
}

double Plot::Extent::effective() const
{
    return count > 0 ? std::sqrt(squares / count) : 0.0;
}

void Plot::add(const RenderBlock& block)
{
    if (block.first >= window)
        return;
    addBeats(block);
    const int count = int(std::min<int64_t>(block.frames, window - block.first));
    for (int i = 0; i < count; ++i)
    {
        Column& column = columns[size_t((block.first + i) * int64_t(columns.size()) / window)];
        for (int channel = 0; channel < 2; ++channel)
        {
            column.input.add(block.input[channel][i]);
            column.output.add(block.output[channel][i]);
        }
        column.gain.add(gainFromRecord(block.gainRecord[i]));
    }
    seen = block.first + count;
}

void Plot::addBeats(const RenderBlock& block)
{
    const Transport& transport = block.transport;
    const double passed = transport.beatsIn(block.frames, setup.rate);
    const double end = transport.ppq + passed; // where the next block's begin
    for (auto beat = int64_t(std::ceil(transport.ppq)); double(beat) < end; ++beat)
    {
        const double frame = double(block.first) + (double(beat) - transport.ppq) / passed * block.frames;
        if (frame < double(window) - 0.5)
            beats.push_back({beat, frame});
    }
}

double Plot::xOfFrame(double frame) const
{
    return soundLane.left + frame / double(window) * (soundLane.right - soundLane.left);
}

double Plot::xOfColumn(size_t column) const
{
    const double share = (double(column) + 0.5) / double(columns.size());
    return soundLane.left + share * (soundLane.right - soundLane.left);
}

float Plot::peak() const
{
    float highest = 0.0f;
    for (const Column& column : columns)
        for (const Extent& extent : {column.input, column.output})
            highest = std::max({highest, -extent.low, extent.high});
    return highest;
}

std::vector<uint8_t> Plot::png() const
{
    Canvas canvas(width, height, background);
    canvas.fillRounded(soundLane, 6.0, laneColour);
    canvas.fillRounded(gainLane, 6.0, laneColour);
    drawSound(canvas);
    drawGain(canvas);
    drawBeats(canvas);
    drawSeconds(canvas);
    drawTitle(canvas);
    return canvas.png();
}

void Plot::drawTitle(Canvas& canvas) const
{
    constexpr double roomForTitle = 1100.0;
    std::string title = setup.title;
    for (size_t kept = title.size(); canvas.textWidth(title, TextSize::title) > roomForTitle;)
        title = setup.title.substr(0, --kept) + "...";
    canvas.text({soundLane.left, 56}, title, TextSize::title, textColour);
    std::string words = formatNumber(setup.tempo) + " BPM, a duck every " + setup.timeBase;
    const double length = double(window) / setup.rate;
    if (setup.frames > window)
        words += ", the first " + seconds(length, 1) + " of " + seconds(double(setup.frames) / setup.rate, 1);
    canvas.text({soundLane.left, 82}, words, TextSize::small, dimTextColour);

    double x = soundLane.right;
    const auto key = [&](const char* name, Colour colour)
    {
        canvas.text({x, 56}, name, TextSize::small, textColour, TextAlign::right);
        x -= canvas.textWidth(name, TextSize::small) + 10.0;
        canvas.fillRounded({x - 14.0, 45.0, x, 57.0}, 3.0, colour);
        x -= 38.0;
    };
    key("gain", gainColour);
    key("output", outputColour);
    key("input", inputColour);
}

// Each lane's full height, and bars stronger than beats; a label where there is room for it.
void Plot::drawBeats(Canvas& canvas) const
{
    constexpr double roomForLine = 8.0;
    constexpr double roomForLabel = 44.0;
    double lastLine = -width, lastLabel = -width;
    for (const Beat& beat : beats)
    {
        const double x = std::floor(xOfFrame(beat.frame)) + 0.5;
        const int64_t inBar = ((beat.number % 4) + 4) % 4;
        const bool bar = inBar == 0;
        if (!bar && x - lastLine < roomForLine)
            continue;
        lastLine = x;
        for (const Box& lane : {soundLane, gainLane})
            canvas.stroke({{x, lane.top}, {x, lane.bottom}}, 1.0, bar ? barColour : beatColour);
        if (x - lastLabel < roomForLabel)
            continue;
        lastLabel = x;
        const int64_t barNumber = (beat.number - inBar) / 4 + 1;
        canvas.text({x, soundLane.top - 10}, std::to_string(barNumber) + '.' + std::to_string(inBar + 1),
                    TextSize::small, bar ? textColour : dimTextColour, TextAlign::centre);
    }
}

void Plot::drawSeconds(Canvas& canvas) const
{
    const double length = double(window) / setup.rate;
    double step = 1.0e-6; // then 2, 5, 10, 20 ... of these
    int decimals = 6;
    for (int i = 0; length / step > 14.0; ++i)
    {
        step *= i % 3 == 1 ? 2.5 : 2.0;
        decimals = std::max(0, 6 - (i + 1) / 3);
    }
    for (int i = 0; i * step <= length * 1.000001; ++i)
    {
        const double x = std::floor(xOfFrame(i * step * setup.rate)) + 0.5;
        canvas.stroke({{x, gainLane.bottom + 8}, {x, gainLane.bottom + 14}}, 1.0, dimTextColour);
        canvas.text({x, gainLane.bottom + 34}, i == 0 ? "0" : seconds(i * step, decimals), TextSize::small,
                    dimTextColour, TextAlign::centre);
    }
}

size_t Plot::columnsSeen() const
{
    return size_t((seen * int64_t(columns.size()) + window - 1) / window);
}

template <typename Reach>
std::vector<Point> Plot::area(Reach reach) const
{
    std::vector<Point> upper, lower; // at least a pixel apart
    for (size_t i = 0; i < columnsSeen(); ++i)
    {
        const auto [up, down] = reach(columns[i]);
        upper.push_back({xOfColumn(i), soundMiddle - up - 0.5});
        lower.push_back({xOfColumn(i), soundMiddle + down + 0.5});
    }
    upper.insert(upper.end(), lower.rbegin(), lower.rend());
    return upper;
}

// The output brighter where most of it is: within its effective value.
void Plot::drawSound(Canvas& canvas) const
{
    const float highest = peak();
    const double reach = (soundLane.bottom - soundLane.top) / 2.0 - inset;
    const double scale = highest > 0.0f ? reach / highest : 0.0;
    const auto peaks = [&](const Extent& of) { return std::pair(of.high * scale, -of.low * scale); };
    const auto body = [&](const Extent& of)
    {
        const auto [up, down] = peaks(of);
        return std::pair(std::min(of.effective() * scale, up), std::min(of.effective() * scale, down));
    };
    canvas.fill(area([&](const Column& column) { return peaks(column.input); }), inputColour);
    canvas.fill(area([&](const Column& column) { return peaks(column.output); }), faded(outputColour, 150));
    canvas.fill(area([&](const Column& column) { return body(column.output); }), outputColour);
}

void Plot::drawGain(Canvas& canvas) const
{
    const double bottom = gainLane.bottom - inset;
    const double top = gainLane.top + inset;
    const auto y = [&](double gain) { return bottom - std::clamp(gain, 0.0, 1.0) * (bottom - top); };

    for (const auto& [gain, label] : {std::pair(0.0, "0"), std::pair(0.5, "0.5"), std::pair(1.0, "1")})
    {
        canvas.stroke({{gainLane.left, y(gain) + 0.5}, {gainLane.right, y(gain) + 0.5}}, 1.0, guideColour);
        canvas.text({gainLane.left - 12, y(gain) + 5}, label, TextSize::small, dimTextColour,
                    TextAlign::right);
    }
    std::vector<Point> line;
    for (size_t i = 0; i < columnsSeen(); ++i)
    {
        double first = y(columns[i].gain.low), second = y(columns[i].gain.high);
        if (!line.empty() && std::abs(line.back().y - second) < std::abs(line.back().y - first))
            std::swap(first, second); // the shorter way through both
        const double x = xOfColumn(i), half = xOfColumn(0) - gainLane.left;
        line.push_back({x - half, first});
        line.push_back({x + half, second});
    }
    if (!line.empty())
    {
        std::vector<Point> area = line;
        area.push_back({line.back().x, bottom});
        area.push_back({line.front().x, bottom});
        canvas.fillFading(area, top, faded(gainColour, 96), bottom, faded(gainColour, 10));
        canvas.stroke(line, 6.0, faded(gainColour, 28));
        canvas.stroke(line, 2.0, gainColour);
    }
}
}
