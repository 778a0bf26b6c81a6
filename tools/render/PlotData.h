// SPDX-License-Identifier: GPL-3.0-or-later
// What the picture of a render shows: the input, the output and the gain of its first part, and its beats.
//
// That part is the first eight beats or sixteen seconds, whichever is shorter: enough to see the shape of
// every duck. Blocks are gathered into columns as they come, so that memory does not grow with the piece.
#pragma once

#include "tools/render/RenderEngine.h"

#include <string>
#include <vector>

namespace lodex
{
class PlotData
{
public:
    struct Setup
    {
        std::string title;    // the name of the piece, UTF-8
        std::string timeBase; // as the product names it
        double tempo = 120.0; // at the start
        int rate = 44100;     // hertz
        int64_t frames = -1;  // of the whole piece; -1 if not known
    };

    // Lowest and highest of what falls into one column of the picture, and its effective value. A sample
    // that is not finite does not count.
    struct Extent
    {
        float low = 0.0f;
        float high = 0.0f;
        double squares = 0.0;
        int count = 0;

        void add(float sample);
        double effective() const;
    };
    struct Column
    {
        Extent input; // both channels
        Extent output;
        Extent gain; // 0 to 1
    };
    struct Beat
    {
        int64_t number; // of quarter notes from position 0
        double frame;
    };

    // There are at most mostColumns of them.
    PlotData(const Setup& described, int mostColumns);

    void add(const RenderBlock& block);

    const Setup& setup() const { return piece; }
    int64_t frames() const { return window; } // that are shown, at most
    double seconds() const { return double(window) / piece.rate; }
    const std::vector<Column>& columns() const { return all; }
    size_t columnsSeen() const; // the number of columns that have data
    const std::vector<Beat>& beats() const { return beatsSeen; }
    // The highest amplitude of input and output.
    float peak() const;

private:
    void addBeats(const RenderBlock& block);

    Setup piece;
    int64_t window;
    int64_t seen = 0; // frames
    std::vector<Column> all;
    std::vector<Beat> beatsSeen;
};
}
