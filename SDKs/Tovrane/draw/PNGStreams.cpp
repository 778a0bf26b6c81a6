// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/PNGStreams.h"

#include "Orbel/storage/ResourceStore.h"

#include <cstring>
#include <png.h>

namespace Tovra
{
void ITovraPNGStream::readCallback(png_struct_def* png, unsigned char* target, unsigned long count)
{
    auto* stream = static_cast<ITovraPNGStream*>(png_get_io_ptr(png));
    if (!stream->read(target, count))
        png_error(png, "the picture ends early");
}

PNGFileStream::~PNGFileStream()
{
    if (file)
        std::fclose(file);
}

bool PNGFileStream::open(const char* path)
{
    if (file)
        std::fclose(file);
    file = path ? std::fopen(path, "rb") : nullptr;
    return file != nullptr;
}

bool PNGFileStream::read(unsigned char* target, unsigned long count)
{
    return file && std::fread(target, 1, count, file) == count;
}

std::vector<unsigned char> PNGFileStream::readAll(std::size_t limit)
{
    constexpr std::size_t step = 65536;
    std::vector<unsigned char> all;
    for (std::size_t got = step; file && got == step && all.size() <= limit;)
    {
        const std::size_t had = all.size();
        all.resize(had + step);
        got = std::fread(all.data() + had, 1, step, file);
        all.resize(had + got);
    }
    if (all.size() > limit)
        all.clear();
    return all;
}

PNGNewResourceStream::~PNGNewResourceStream()
{
    closeResource(data);
}

bool PNGNewResourceStream::open(const char* name)
{
    closeResource(data);
    position = 0;
    data = GetResource(name, size);
    return data && size != 0;
}

bool PNGNewResourceStream::read(unsigned char* target, unsigned long count)
{
    if (!data || count > size - position)
        return false;
    std::memcpy(target, data + position, count);
    position += count;
    return true;
}

std::vector<unsigned char> PNGNewResourceStream::readAll()
{
    if (!data)
        return {};
    const auto* const bytes = reinterpret_cast<const unsigned char*>(data);
    std::vector<unsigned char> all(bytes + position, bytes + size);
    position = size;
    return all;
}
}
