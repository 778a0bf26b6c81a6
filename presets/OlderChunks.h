// SPDX-License-Identifier: GPL-3.0-or-later
// The two tagged forms in which the two-band product kept its presets: what stands where. Integers and
// floats have 32 bits and are big-endian. Records and entries stand at these offsets, whatever a header says
// of its own size.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace OLDPRESET
{
using std::string_view_literals::operator""sv;

constexpr std::uint32_t kFirstVersion = 8192; // in older versions there are no records, or no key block

// One value of one parameter.
namespace record
{
constexpr size_t id = 0; // text
constexpr size_t idSize = 52;
constexpr size_t value = 52;
constexpr size_t tempo = 56;
constexpr size_t size = 60; // at least
}

// One preset.
namespace chunk
{
constexpr std::string_view id = "QDTDKSCNK\0"sv; // as a text with its end
constexpr size_t headerSize = 12;
constexpr size_t version = 16;
constexpr size_t keyBlock = 20; // if its first word is 0, the records are plain
constexpr size_t keyBlockSize = 532;
constexpr size_t recordCount = 536;
constexpr size_t recordSize = 544;
constexpr size_t name = 552;
constexpr size_t nameSize = 28;
constexpr size_t records = 604;
}

// A bank, and each of its entries.
namespace bank
{
constexpr std::string_view id = "QDTDKSBNK\0"sv;
constexpr size_t stride = 16; // bytes from entry to entry
constexpr size_t version = 20;
constexpr size_t keyBlock = 24;
constexpr size_t count = 536;
constexpr size_t entries = 544;
}

namespace entry
{
constexpr size_t version = 4;
constexpr size_t recordCount = 8;
constexpr size_t recordSize = 12;
constexpr size_t name = 16;
constexpr size_t nameSize = 52;
constexpr size_t records = 68;
}
}
