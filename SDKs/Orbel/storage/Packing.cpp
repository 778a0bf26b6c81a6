// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/Packing.h"

#include "CORE/ForeignData.h"

#include <algorithm>
#include <limits>
#include <mutex>
#include <zlib.h>

namespace Orbel
{
namespace
{
constexpr size_t foldWindow = 4;
constexpr size_t foldStep = 2;
constexpr std::uint64_t bestRatio = 1032; // of deflate: 258 bytes in two bits

const Bytef* bytesOf(std::string_view data)
{
    return reinterpret_cast<const Bytef*>(data.data());
}

Bytef* bytesOf(std::string& data)
{
    return reinterpret_cast<Bytef*>(data.data());
}

// The memory that deflate works in, a quarter of a megabyte. Allocating and freeing it took longer than
// packing a state, so all instances share one and keep it.
class Deflater
{
public:
    Deflater() { usable = deflateInit(&stream, Z_BEST_COMPRESSION) == Z_OK; }
    ~Deflater() { deflateEnd(&stream); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    // Packs into out, whose size is the room; afterwards out is the stream. False if it did not fit.
    bool pack(std::string_view data, std::string& out)
    {
        constexpr size_t most = std::numeric_limits<uInt>::max();
        const std::lock_guard lock(mutex);
        if (!usable || data.size() > most || deflateReset(&stream) != Z_OK)
            return false;
        stream.next_in = const_cast<Bytef*>(bytesOf(data)); // which it only reads
        stream.avail_in = uInt(data.size());
        stream.next_out = bytesOf(out);
        stream.avail_out = uInt(std::min(out.size(), most));
        const bool whole = deflate(&stream, Z_FINISH) == Z_STREAM_END;
        out.resize(whole ? stream.total_out : 0);
        return whole;
    }

private:
    std::mutex mutex;
    z_stream stream{};
    bool usable = false;
};

void reverseWindow(std::span<char> data, size_t at)
{
    std::reverse(data.begin() + long(at), data.begin() + long(at + foldWindow));
}
}

std::optional<std::string> pack(std::string_view data, std::uint64_t room)
{
    static Deflater deflater;
    std::string out(room, '\0');
    if (!deflater.pack(data, out))
        return {};
    return out;
}

bool unpack(std::string_view stream, std::uint64_t room, std::string& out)
{
    out.clear();
    if (room > Core::kLargestForeignSize)
        return false;
    out.resize(std::min(room, stream.size() * bestRatio));
    uLongf length = out.size();
    const bool whole = uncompress(bytesOf(out), &length, bytesOf(stream), stream.size()) == Z_OK;
    out.resize(whole ? length : 0);
    out.shrink_to_fit();
    return whole;
}

void fold(std::span<char> data)
{
    for (size_t i = 0; i + foldWindow <= data.size(); i += foldStep)
        reverseWindow(data, i);
}

void unfold(std::span<char> data)
{
    if (data.size() < foldWindow)
        return;
    const size_t last = (data.size() - foldWindow) / foldStep * foldStep;
    for (size_t i = last + foldStep; i > 0; i -= foldStep)
        reverseWindow(data, i - foldStep);
}

void scramble(std::span<char> data)
{
    for (size_t i = 0; i < data.size(); ++i)
        data[i] = static_cast<char>(data[i] ^ (i % 2 == 0 ? 0xAA : 0x55));
}
}
