#include "tools/pack_resources/ResourcePacker.h"

#include "CORE/ForeignData.h"
#include "Orbel/storage/Packing.h"

#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string_view>

namespace lodex
{
namespace
{
using namespace std::literals;

constexpr std::string_view magic = "RESOURCE2\0"sv;
constexpr size_t magicField = 12; // two bytes are reserved
constexpr std::uint32_t version = 8192;
constexpr std::uint32_t headerSize = 20;
constexpr std::uint32_t indexHeaderSize = 20;
constexpr size_t nameField = 256;
constexpr size_t roomToPack = 1000; // for what does not get smaller
constexpr std::uint32_t scrambledMark = 0xffffffff;

void appendWords(std::string& to, std::initializer_list<size_t> words)
{
    char bytes[4];
    for (const size_t word : words)
    {
        Core::writeLittle32(bytes, std::uint32_t(word));
        to.append(bytes, sizeof bytes);
    }
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
    if (name.empty() || name.size() >= nameField || name.find('\0') != name.npos)
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
    std::ifstream file(path, std::ios::binary);
    std::string content((std::istreambuf_iterator<char>(file)), {});
    if (!file)
        throw std::runtime_error(path + ": cannot be read");
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

std::string makeBlock(std::span<const Resource> resources)
{
    std::string index, payload;
    std::set<std::string> names;
    for (const Resource& resource : resources)
    {
        check(resource, names);
        const std::string stored =
            resource.compressed ? packed(resource.content) : scrambled(resource.content);
        index += resource.name + std::string(nameField - resource.name.size(), '\0');
        appendWords(index, {resource.content.size(), resource.compressed ? stored.size() : scrambledMark,
                            payload.size()});
        payload += stored;
        if (payload.size() > Core::kLargestForeignSize || resource.content.size() > Core::kLargestForeignSize)
            throw std::runtime_error("\"" + resource.name + "\": more than 64 MiB");
    }
    const std::string storedIndex = packed(index);

    std::string block(magic);
    block.resize(magicField);
    appendWords(block, {headerSize, version});
    appendWords(block, {payload.size(), indexHeaderSize + storedIndex.size(), index.size(),
                        storedIndex.size(), resources.size()});
    return block + storedIndex + payload;
}
}
