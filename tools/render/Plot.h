// SPDX-License-Identifier: GPL-3.0-or-later
// The picture of a render: the input behind the output, and the gain below them, over beats and seconds. It
// is drawn with the toolkit, in the colours of the product's window.
#pragma once

#include "Tovrane/base/CPoint.h"
#include "tools/render/PlotData.h"

namespace lodex
{
class PlotPicture;

class Plot
{
public:
    using Setup = PlotData::Setup;

    explicit Plot(const Setup& described);

    void add(const RenderBlock& block) { data.add(block); }
    // What was added, as a PNG file of 1600 x 900 pixels. A ToolError if there is not enough memory.
    std::vector<unsigned char> png() const;

private:
    double xOfFrame(double frame) const;
    double xOfColumn(size_t column) const;

    void drawTitle(PlotPicture& picture) const;
    void drawKey(PlotPicture& picture) const;
    void drawBeats(PlotPicture& picture) const;
    void drawSeconds(PlotPicture& picture) const;
    void drawSound(PlotPicture& picture) const;
    void drawGain(PlotPicture& picture) const;
    // Around the middle of the sound's lane; reach gives a column's pixels up and down from there.
    template <typename Reach>
    std::vector<Tovra::CPoint> area(Reach reach) const;
    std::vector<Tovra::CPoint> gainLine() const;

    PlotData data;
};
}
