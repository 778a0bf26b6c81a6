// SPDX-License-Identifier: GPL-3.0-or-later
// A block of resources of the current form, "RESOURCE2": what stands where. CResourceStore2 reads it, the
// build's pack_resources writes it.
//
// A block begins with a header. At indexOffset stands the header of the index, followed by the index as a
// zlib stream, and at payloadOffset from there the resources, one after another. Integers have 32 bits and
// are little-endian; the version and the payload's size are not read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Orbel::ResourceLayout
{
using std::string_view_literals::operator""sv;

namespace block
{
constexpr std::string_view magic = "RESOURCE2\0"sv;
constexpr size_t indexOffset = 12;
constexpr size_t version = 16;
constexpr size_t size = 20;
constexpr std::uint32_t writtenVersion = 8192;
}

namespace indexHeader
{
constexpr size_t payloadSize = 0;
constexpr size_t payloadOffset = 4;
constexpr size_t rawSize = 8;
constexpr size_t storedSize = 12;
constexpr size_t entryCount = 16;
constexpr size_t size = 20; // the index follows
}

namespace entry
{
constexpr size_t nameSize = 256; // its NUL included
constexpr size_t rawSize = 256;
constexpr size_t storedSize = 260; // of a zlib stream; what is not above 0 as a signed number means scrambled
constexpr size_t offset = 264;     // in the payload
constexpr size_t size = 268;
constexpr std::uint32_t scrambled = 0xffffffff; // as the stored size
}
}
