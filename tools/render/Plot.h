// The picture of a render: the input behind the output, and the gain below them, over the beats.
//
// It is drawn for the first eight beats or sixteen seconds, whichever end sooner: enough to see the shape
// of every duck. Blocks are gathered into columns as they come, so that memory does not grow.
#pragma once

#include "tools/render/Canvas.h"
#include "tools/render/RenderEngine.h"

#include <string>
#include <vector>

namespace lodex
{
class Plot
{
public:
    struct Setup
    {
        std::string title;    // the name of the piece
        std::string timeBase; // as the product names it
        double tempo = 120.0; // at the start
        int rate = 44100;     // hertz
        int64_t frames = -1;  // of the whole piece; -1 if not known
    };

    explicit Plot(const Setup& described);

    void add(const RenderBlock& block);
    // The picture of what was added, as a PNG file of 1600 x 900 pixels.
    std::vector<uint8_t> png() const;

private:
    // Highest and lowest of what falls into one column of the picture, and its effective value.
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
        Extent input;
        Extent output;
        Extent gain;
    };
    struct Beat
    {
        int64_t number; // of quarter notes from position 0
        double frame;
    };

    void addBeats(const RenderBlock& block);
    double xOfFrame(double frame) const;
    double xOfColumn(size_t column) const;
    float peak() const;

    void drawTitle(Canvas& canvas) const;
    void drawBeats(Canvas& canvas) const;
    void drawSeconds(Canvas& canvas) const;
    void drawSound(Canvas& canvas) const;
    void drawGain(Canvas& canvas) const;
    size_t columnsSeen() const;
    // Around the middle of the sound's lane; reach gives a column's pixels up and down from there.
    template <typename Reach>
    std::vector<Point> area(Reach reach) const;

    Setup setup;
    int64_t window; // frames that the picture covers, at most
    int64_t seen = 0;
    std::vector<Column> columns;
    std::vector<Beat> beats;
};
}
