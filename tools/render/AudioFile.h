// SPDX-License-Identifier: GPL-3.0-or-later
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
    // Throws a ToolError that says why the file cannot be used.
    explicit AudioReader(const std::string& name);

    int rate() const { return sampleRate; } // hertz
    // As the file says; -1 if that cannot be known before its end.
    int64_t length() const { return frames; }
    // Fills both channels with the next samples of the file; those of a mono file go into both. Samples are
    // not clipped and a NaN stays a NaN. Returns how many there were: fewer than asked for at the end.
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

// A WAV file of 32-bit floats, or RF64 if it may grow beyond what a WAV file holds. The same samples give the
// same bytes.
class AudioWriter
{
public:
    // frames is the length to come, -1 if it is unknown. target outlives the writer.
    AudioWriter(OutputFile& target, int rate, int channelCount, int64_t frames);

    // samples has one pointer for each channel. Throws a ToolError if the disk is full.
    void write(const float* const* samples, int count);
    // Completes the file, which is invalid without it.
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
