// Sound files in and out, a piece at a time: memory does not grow with their length.
#pragma once

#include "tools/common/OutputFile.h"

#include <memory>
#include <string>
#include <vector>

struct sf_private_tag;

namespace lodex
{
struct CloseSoundFile
{
    void operator()(sf_private_tag* file) const;
};
using SoundFile = std::unique_ptr<sf_private_tag, CloseSoundFile>;

// Any format and rate that libsndfile reads, of one or two channels.
class AudioReader
{
public:
    // A ToolError if there is no such file, or why it is none that can be used.
    explicit AudioReader(const std::string& name);

    int rate() const { return sampleRate; } // hertz
    // As the file says it; -1 where that can't be known before its end.
    int64_t length() const { return frames; }
    // Fills both channels with the next samples, the same in both for a mono file, as they stand there:
    // nothing is clipped and a NaN stays one. Says how many; fewer than asked for at the end of the file.
    int read(float* left, float* right, int count);

private:
    bool refill();

    std::string path;
    SoundFile file;
    int sampleRate = 0;
    int channels = 0;
    int64_t frames = -1;
    std::vector<float> buffer; // interleaved
    int held = 0;              // frames in the buffer
    int taken = 0;
};

// A WAV file of 32-bit floats; RF64 where it may grow beyond what a WAV file holds. The same samples give
// the same bytes.
class AudioWriter
{
public:
    // frames is the length to come, -1 if it isn't known. target outlives the writer.
    AudioWriter(OutputFile& target, int rate, int channelCount, int64_t frames);

    // One pointer a channel. A ToolError if the disk is full.
    void write(const float* const* samples, int count);
    // Completes the file. Without it nothing of it is good.
    void finish();

private:
    void flushBuffer();
    [[noreturn]] void fail() const;

    OutputFile& output;
    SoundFile file;
    int channels;
    std::vector<float> buffer; // interleaved
};
}
