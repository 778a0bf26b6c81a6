// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/AudioFile.h"

#include "tools/common/Text.h"
#include "tools/common/ToolError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sndfile.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lodex
{
constexpr int bufferedFrames = 4096;
constexpr int highestRate = 10'000'000; // more than any converter has; the effect's delay line grows with it

void CloseSoundFile::operator()(sf_private_tag* file) const
{
    sf_close(file);
}

static int openForReading(const std::string& path)
{
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0 && errno == ENOENT)
        throw ToolError("no such file: " + printable(path));
    if (fd < 0)
        throw ToolError("cannot open " + printable(path) + ": " + std::strerror(errno));
    if (struct stat status; fstat(fd, &status) == 0 && S_ISDIR(status.st_mode))
    {
        close(fd);
        throw ToolError(printable(path) + " is a folder, not an audio file");
    }
    return fd;
}

AudioReader::AudioReader(const std::string& name) : path(name)
{
    SF_INFO info{};
    file.reset(sf_open_fd(openForReading(path), SFM_READ, &info, SF_TRUE));
    if (!file)
        throw ToolError("cannot read " + printable(path) + " as audio: " + printable(sf_strerror(nullptr)));
    if (info.channels < 1 || info.channels > 2)
        throw ToolError(printable(path) + " has " + std::to_string(info.channels) +
                        " channels; only mono and stereo can be rendered");
    if (info.samplerate < 1 || info.samplerate > highestRate)
        throw ToolError(printable(path) + " has a sample rate of " + std::to_string(info.samplerate) + " Hz");
    sampleRate = info.samplerate;
    channels = info.channels;
    if (info.seekable)
        frames = info.frames;
    buffer.resize(size_t(bufferedFrames) * size_t(channels));
}

int AudioReader::read(float* left, float* right, int count)
{
    int done = 0;
    for (; done < count && (taken < held || refill()); ++done, ++taken)
    {
        const float* const frame = &buffer[size_t(taken) * size_t(channels)];
        left[done] = frame[0];
        right[done] = frame[channels - 1];
    }
    return done;
}

bool AudioReader::refill()
{
    taken = 0;
    held = int(sf_readf_float(file.get(), buffer.data(), bufferedFrames));
    if (held < bufferedFrames && sf_error(file.get()) != SF_ERR_NO_ERROR)
        throw ToolError("cannot read " + printable(path) + ": " + printable(sf_strerror(file.get())));
    return held > 0;
}

static SF_INFO formatFor(int rate, int channels, int64_t frames)
{
    constexpr int64_t room = (int64_t(1) << 32) - 4096; // of a WAV file, less its headers
    const bool fits = frames >= 0 && frames <= room / (channels * int64_t(sizeof(float)));
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = channels;
    info.format = (fits ? SF_FORMAT_WAV : SF_FORMAT_RF64) | SF_FORMAT_FLOAT;
    return info;
}

AudioWriter::AudioWriter(OutputFile& target, int rate, int channelCount, int64_t frames)
    : output(target), channels(channelCount)
{
    SF_INFO info = formatFor(rate, channels, frames);
    file.reset(sf_open_fd(output.descriptor(), SFM_WRITE, &info, SF_FALSE));
    if (!file)
        fail();
    sf_command(file.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE); // it holds the time of day
    sf_command(file.get(), SFC_RF64_AUTO_DOWNGRADE, nullptr, SF_TRUE); // to WAV, if it turns out short
    buffer.reserve(size_t(bufferedFrames) * size_t(channels));
}

void AudioWriter::write(const float* const* samples, int count)
{
    for (int i = 0; i < count; ++i)
    {
        for (int channel = 0; channel < channels; ++channel)
            buffer.push_back(samples[channel][i]);
        if (buffer.size() == buffer.capacity())
            flushBuffer();
    }
}

void AudioWriter::flushBuffer()
{
    const auto count = sf_count_t(buffer.size());
    if (sf_write_float(file.get(), buffer.data(), count) != count)
        fail();
    buffer.clear();
}

void AudioWriter::finish()
{
    flushBuffer();
    sf_write_sync(file.get());
    if (sf_error(file.get()) != SF_ERR_NO_ERROR)
        fail();
    if (sf_close(file.release()) != 0)
        throw ToolError("cannot write " + printable(output.name()) + ": the file could not be completed");
}

void AudioWriter::fail() const
{
    throw ToolError("cannot write " + printable(output.name()) + ": " + printable(sf_strerror(file.get())));
}
}
