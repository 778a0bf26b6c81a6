// SPDX-License-Identifier: GPL-3.0-or-later
// The built lodex command, run as a process in a folder of its own.
#pragma once

#include "support/TempFolder.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <sndfile.h>
#include <string>
#include <sys/wait.h>
#include <vector>

class LodexProcess : public testing::Test
{
protected:
    struct Result
    {
        int code;
        std::string out, err;
    };

    // Runs a line of the shell, in which %lodex means the command.
    Result shell(std::string line)
    {
        const std::string name = "\"" LODEX_COMMAND "\"";
        for (size_t at; (at = line.find("%lodex")) != line.npos;)
            line.replace(at, std::strlen("%lodex"), name);
        const std::string inFolder = "cd '" + folder.path.string() + "' && { " + line + "\n} >" +
                                     (logs / "out") + " 2>" + (logs / "err");
        const int status = std::system(inFolder.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, logs.content("out"), logs.content("err")};
    }
    Result lodex(const std::string& arguments) { return shell("%lodex " + arguments); }

    // Whether two files hold the same bytes: what they hold is nothing to print.
    bool same(const std::string& name, const std::string& other)
    {
        return folder.content(name) == folder.content(other);
    }

    void putSound(const std::string& name, int channels, int hertz, const std::vector<float>& samples)
    {
        SF_INFO info{};
        info.channels = channels;
        info.samplerate = hertz;
        info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
        SNDFILE* const file = sf_open((folder / name).c_str(), SFM_WRITE, &info);
        ASSERT_NE(file, nullptr);
        EXPECT_EQ(sf_write_float(file, samples.data(), sf_count_t(samples.size())),
                  sf_count_t(samples.size()));
        sf_close(file);
    }

    // Steady noise, so that what the gain does shows in every sample.
    void putNoise(const std::string& name, int hertz, int frames)
    {
        uint32_t random = 1;
        std::vector<float> noise(size_t(2) * frames);
        for (float& sample : noise)
        {
            random = random * 1664525u + 1013904223u;
            sample = float(int32_t(random)) / 4294967296.0f;
        }
        putSound(name, 2, hertz, noise);
    }

    TempFolder folder, logs;
};
