#include "Orbel/Packing.h"

#include "CORE/ForeignData.h"

#include <algorithm>
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

void reverseWindow(std::span<char> data, size_t at)
{
    std::reverse(data.begin() + long(at), data.begin() + long(at + foldWindow));
}
}

std::optional<std::string> pack(std::string_view data, std::uint64_t room)
{
    std::string out(room, '\0');
    uLongf length = room;
    if (compress2(bytesOf(out), &length, bytesOf(data), data.size(), Z_BEST_COMPRESSION) != Z_OK)
        return {};
    out.resize(length);
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
