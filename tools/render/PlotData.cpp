// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/PlotData.h"

#include <algorithm>
#include <cmath>

namespace lodex
{
constexpr double mostBeats = 8.0;
constexpr double mostSeconds = 16.0;

PlotData::PlotData(const Setup& described, int mostColumns) : piece(described)
{
    const double shown = std::min(mostBeats * 60.0 / piece.tempo, mostSeconds);
    window = std::max<int64_t>(1, std::llround(shown * piece.rate));
    if (piece.frames >= 0)
        window = std::clamp<int64_t>(piece.frames, 1, window);
    all.resize(size_t(std::min<int64_t>(mostColumns, window)));
}

void PlotData::Extent::add(float sample)
{
    if (!std::isfinite(sample))
        return;
    low = count > 0 ? std::min(low, sample) : sample;
    high = count > 0 ? std::max(high, sample) : sample;
    squares += double(sample) * sample;
    ++count;
}

double PlotData::Extent::effective() const
{
    return count > 0 ? std::sqrt(squares / count) : 0.0;
}

void PlotData::add(const RenderBlock& block)
{
    if (block.first >= window)
        return;
    addBeats(block);
    const int count = int(std::min<int64_t>(block.frames, window - block.first));
    for (int i = 0; i < count; ++i)
    {
        Column& column = all[size_t((block.first + i) * int64_t(all.size()) / window)];
        for (int channel = 0; channel < 2; ++channel)
        {
            column.input.add(block.input[channel][i]);
            column.output.add(block.output[channel][i]);
        }
        column.gain.add(gainFromRecord(block.gainRecord[i]));
    }
    seen = block.first + count;
}

void PlotData::addBeats(const RenderBlock& block)
{
    const Transport& transport = block.transport;
    const double passed = transport.beatsIn(block.frames, piece.rate);
    const double end = transport.ppq + passed; // where the next block's begin
    for (auto beat = int64_t(std::ceil(transport.ppq)); double(beat) < end; ++beat)
    {
        const double frame = double(block.first) + (double(beat) - transport.ppq) / passed * block.frames;
        if (frame < double(window) - 0.5)
            beatsSeen.push_back({beat, frame});
    }
}

size_t PlotData::columnsSeen() const
{
    return size_t((seen * int64_t(all.size()) + window - 1) / window);
}

float PlotData::peak() const
{
    float highest = 0.0f;
    for (const Column& column : all)
        for (const Extent& extent : {column.input, column.output})
            highest = std::max({highest, -extent.low, extent.high});
    return highest;
}
}
