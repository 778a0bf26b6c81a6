// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a program file and as a bank file: what is taken lies inside what was given, and
// what is wrapped comes back.
#include "Orbel/storage/CFileFormat.h"
#include "Require.h"

#include <string>
#include <string_view>

namespace
{

std::string wrapped(const Orbel::CPresetFormatFXP& format, std::string_view payload)
{
    return format.wrap("a program's name of more than 27 characters", payload.data(), long(payload.size()));
}

std::string wrapped(const Orbel::CPresetFormatFXB& format, std::string_view payload)
{
    return format.wrap(payload.data(), long(payload.size()));
}

std::string_view unwrapped(const Orbel::CPresetFormat& format, std::string_view image)
{
    std::string_view payload;
    const Orbel::Diagnosis found = format.unwrap(image, payload);
    require(found.taken == !payload.empty(), "what is taken has a byte at least");
    require(found.taken || !found.why.empty(), "a refusal has a reason");
    require(found.at <= image.size(), "a fault lies in what was given");
    if (!found.taken)
        return {};
    require(payload.data() > image.data() && payload.end() <= image.end(), "inside what was given");
    return payload;
}

template <typename Format>
void tryFormat(std::string_view image)
{
    Format format;
    format.setPluginID(0x51444B43); // "QDKC"
    unwrapped(format, image);

    const std::string again = wrapped(format, image);
    require(unwrapped(format, again) == image, "what is wrapped comes back");
}
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const std::string_view image(reinterpret_cast<const char*>(data), size);
    tryFormat<Orbel::CPresetFormatFXP>(image);
    tryFormat<Orbel::CPresetFormatFXB>(image);
    return 0;
}
