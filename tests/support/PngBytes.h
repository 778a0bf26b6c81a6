// SPDX-License-Identifier: GPL-3.0-or-later
// PNG files as bytes: a stream over them, and check sums that fit what was changed in them.
#pragma once

#include "CORE/ForeignData.h"
#include "Tovrane/draw/PNGStreams.h"

#include <cstring>
#include <string>
#include <zlib.h>

class PngBytes : public Tovra::ITovraPNGStream
{
public:
    explicit PngBytes(std::string content) : bytes(std::move(content)) {}
    bool read(unsigned char* target, unsigned long count) override
    {
        if (count > bytes.size() - position)
            return false;
        std::memcpy(target, bytes.data() + position, count);
        position += count;
        return true;
    }

private:
    std::string bytes;
    size_t position = 0;
};

// Of every chunk that is whole.
inline std::string withRightCheckSums(std::string file)
{
    constexpr size_t signature = 8, around = 12; // length and type before the data of a chunk, the sum behind
    for (size_t at = signature; at + around <= file.size();)
    {
        const size_t length = Core::readBig32(&file[at]);
        if (length > file.size() - at - around)
            break;
        const auto* covered = reinterpret_cast<const Bytef*>(&file[at + 4]);
        Core::writeBig32(&file[at + 8 + length], std::uint32_t(crc32(0, covered, uInt(length + 4))));
        at += around + length;
    }
    return file;
}
