// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/pack_resources/ResourcePacker.h"

#include "CORE/File.h"
#include "CORE/ForeignData.h"
#include "Orbel/storage/CResourceStore2.h"
#include "Orbel/storage/Packing.h"
#include "Orbel/storage/ResourceLayout.h"

#include <set>
#include <stdexcept>
#include <string_view>

namespace lodex
{
namespace
{
namespace layout = Orbel::ResourceLayout;

constexpr size_t roomToPack = 1000; // for what does not get smaller

void put(std::string& to, size_t at, size_t word)
{
    Core::writeLittle32(to.data() + at, std::uint32_t(word));
}

std::string packed(const std::string& content)
{
    return Orbel::pack(content, content.size() + content.size() / 1000 + roomToPack).value();
}

std::string scrambled(std::string content)
{
    Orbel::scramble(content);
    return content;
}

void check(const Resource& resource, std::set<std::string>& names)
{
    const std::string& name = resource.name;
    if (name.empty() || name.size() >= layout::entry::nameSize || name.find('\0') != name.npos)
        throw std::runtime_error("\"" + name + "\": not a name of 1 to 255 characters");
    if (!names.insert(name).second)
        throw std::runtime_error("\"" + name + "\": there twice");
}

// Takes the ending away if it is there.
bool removeEnding(std::string& text, std::string_view ending)
{
    if (!text.ends_with(ending))
        return false;
    text.resize(text.size() - ending.size());
    return true;
}

std::string readFile(const std::string& path)
{
    std::string content;
    if (const auto read = Core::File::readFile(path.c_str(), Core::kLargestForeignSize, content); !read)
        throw std::runtime_error(path + ": cannot be read: " + read.problem);
    return content;
}
}

Resource readResource(const std::string& argument)
{
    const size_t equals = argument.find('=');
    if (equals == argument.npos)
        throw std::runtime_error("\"" + argument +
                                 "\": not name=file, name=file:zlib or name=file:scrambled");
    std::string path = argument.substr(equals + 1);
    const bool compressed = removeEnding(path, ":zlib");
    if (!compressed)
        removeEnding(path, ":scrambled");
    return {.name = argument.substr(0, equals), .content = readFile(path), .compressed = compressed};
}

static std::string entryOf(const Resource& resource, size_t storedSize, size_t offset)
{
    namespace entry = layout::entry;
    std::string bytes(entry::size, '\0');
    resource.name.copy(bytes.data(), entry::nameSize);
    put(bytes, entry::rawSize, resource.content.size());
    put(bytes, entry::storedSize, resource.compressed ? storedSize : entry::scrambled);
    put(bytes, entry::offset, offset);
    return bytes;
}

static std::string headerOf(size_t payloadSize, size_t indexSize, size_t storedIndexSize, size_t count)
{
    namespace block = layout::block;
    namespace index = layout::indexHeader;
    std::string bytes(block::magic);
    bytes.resize(block::size + index::size);
    put(bytes, block::indexOffset, block::size);
    put(bytes, block::version, block::writtenVersion);
    put(bytes, block::size + index::payloadSize, payloadSize);
    put(bytes, block::size + index::payloadOffset, index::size + storedIndexSize);
    put(bytes, block::size + index::rawSize, indexSize);
    put(bytes, block::size + index::storedSize, storedIndexSize);
    put(bytes, block::size + index::entryCount, count);
    return bytes;
}

std::string makeBlock(std::span<const Resource> resources)
{
    std::string index, payload;
    std::set<std::string> names;
    for (const Resource& resource : resources)
    {
        check(resource, names);
        const std::string stored =
            resource.compressed ? packed(resource.content) : scrambled(resource.content);
        index += entryOf(resource, stored.size(), payload.size());
        payload += stored;
        if (payload.size() > Core::kLargestForeignSize || resource.content.size() > Core::kLargestForeignSize)
            throw std::runtime_error("\"" + resource.name + "\": more than 64 MiB");
    }
    const std::string storedIndex = packed(index);
    std::string block =
        headerOf(payload.size(), index.size(), storedIndex.size(), resources.size()) + storedIndex + payload;
    const CResourceStore2 readBack(block.data(), long(block.size()));
    if (!readBack.getDiagnosis().isSound())
        throw std::runtime_error("the block cannot be read: " + readBack.getDiagnosis().why);
    return block;
}
}
