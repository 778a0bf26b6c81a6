// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CFontDesc.h"

#include "Orbel/storage/ResourceStore.h"
#include "resources/FontResources.h"

#include <cstring>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace Tovra
{
CFontDesc gNormalFont("arial.ttf", "arialbd.ttf", 12.0, kFontCacheLCD);
CFontDesc gNormalFont_NoLCD("arial.ttf", "arialbd.ttf", 12.0, kFontCacheGrey);
CFontDesc* const kNormalFont = &gNormalFont;

// Null if there is no such font resource. The data is kept for good, since renderers keep faces by name,
// longer than a font lives.
static const std::string* readFace(const char* name)
{
    static std::mutex reading;
    static std::map<std::string, std::optional<std::string>> known;

    const std::lock_guard guard(reading);
    auto found = known.find(name);
    if (found == known.end())
    {
        const Orbel::ResourceBlock block = fontResources();
        found = known.emplace(name, Orbel::readResource(block.data, block.size, name)).first;
    }
    return found->second ? &*found->second : nullptr;
}

CFontDesc::CFontDesc(const char* regularName, const char* boldName, double ofSize, FontCacheType type)
    : size(ofSize),
      regular{regularName},
      bold{boldName && std::strcmp(boldName, regularName) != 0 ? boldName : regularName},
      cacheType(type)
{
}

const char* CFontDesc::getName() const
{
    return style != 0 ? regular.name : bold.name;
}

bool CFontDesc::getFont(const char*& data, long& length)
{
    Face& face = style == 1 ? bold : regular;
    if (!face.loaded)
        face.data = readFace(face.name);
    face.loaded = true;
    data = face.data ? face.data->data() : nullptr;
    length = face.data ? long(face.data->size()) : 0;
    return data != nullptr;
}
}
