#include "Orbel/storage/ResourceStore.h"

#include "CORE/ForeignData.h"
#include "Orbel/storage/Packing.h"

#include <algorithm>
#include <cstring>

using namespace std::literals;
using std::string_view;

namespace
{
// A block of the current form: this header, at indexOffset that of the index with the index behind it, and
// at payloadOffset from there the resources, one after another. Integers have 32 bits and are little-endian;
// the version (8192) and the payload's size are not read.
namespace block
{
constexpr string_view magic = "RESOURCE2\0"sv;
constexpr size_t indexOffset = 12;
constexpr size_t size = 20;
}

namespace indexHeader
{
constexpr size_t payloadOffset = 4;
constexpr size_t rawSize = 8;
constexpr size_t storedSize = 12;
constexpr size_t entryCount = 16;
constexpr size_t size = 20; // the index, a zlib stream, follows
}

namespace entry
{
constexpr size_t nameSize = 256; // its NUL included
constexpr size_t rawSize = 256;
constexpr size_t storedSize = 260;
constexpr size_t offset = 264;
constexpr size_t size = 268;
}

constexpr std::uint64_t indexSlack = 100;   // by how much an index may be longer than it says
constexpr std::uint64_t resourceSlack = 20; // and a resource

constexpr string_view currentForm = "RESOURCE"; // what begins otherwise is taken for the older form

constexpr Orbel::ContainerLayout olderForm = {
    .idSize = 10,
    .fields = 12,
    .size = 32,
    .scrambled = true,
    .tag = "Rcnk\0"sv,
    .nameSize = 255,
    .recordFields = 264,
    .recordSize = 280,
};

// The bytes of data from offset on, up to length of them; nothing if they are not all there.
std::optional<string_view> part(string_view data, std::uint64_t offset, std::uint64_t length)
{
    if (offset + length > data.size())
        return {};
    return data.substr(offset, length);
}
}

CResourceStore2::CResourceStore2(const char* data, long size)
{
    const string_view whole(data ? data : "", data && size > 0 ? size_t(size) : 0);
    if (whole.size() < block::size || !whole.starts_with(block::magic))
        return;
    const std::uint64_t start = Core::readLittle32(whole.data() + block::indexOffset);
    const auto header = part(whole, start, indexHeader::size);
    if (!header)
        return;
    const auto field = [&](size_t at) -> std::uint64_t { return Core::readLittle32(header->data() + at); };
    const auto stored = part(whole, start + indexHeader::size, field(indexHeader::storedSize));
    const std::uint64_t base = start + field(indexHeader::payloadOffset);
    std::string index;
    if (!stored || base > whole.size() ||
        !Orbel::unpack(*stored, field(indexHeader::rawSize) + indexSlack, index))
        return;
    payload = whole.substr(base);
    readEntries(index, field(indexHeader::entryCount));
}

void CResourceStore2::readEntries(string_view index, std::uint64_t count)
{
    if (count * entry::size > index.size())
        return;
    for (const char* at = index.data(); count > 0; --count, at += entry::size)
        entries.push_back({.name = {at, strnlen(at, entry::nameSize)},
                           .rawSize = Core::readLittle32(at + entry::rawSize),
                           .storedSize = std::int32_t(Core::readLittle32(at + entry::storedSize)),
                           .offset = Core::readLittle32(at + entry::offset)});
}

const CResourceStore2::Entry* CResourceStore2::findEntry(string_view name) const
{
    if (name.size() >= entry::nameSize) // a name without its end in the field is none
        return nullptr;
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const Entry& one) { return one.name == name; });
    return found == entries.end() ? nullptr : &*found;
}

std::optional<std::string> CResourceStore2::read(const char* name) const
{
    const Entry* const found = name ? findEntry(name) : nullptr;
    if (!found)
        return {};
    const bool packed = found->storedSize > 0;
    const std::uint64_t length = packed ? std::uint64_t(found->storedSize) : found->rawSize;
    const auto stored = part(payload, found->offset, length);
    if (!stored || length > Core::kLargestForeignSize)
        return {};

    std::string resource;
    if (packed)
    {
        if (!Orbel::unpack(*stored, found->rawSize + resourceSlack, resource))
            return {};
    }
    else
    {
        resource = *stored;
        Orbel::scramble(resource);
    }
    return resource;
}

char* CResourceStore2::getResource(const char* name, unsigned long& size)
{
    auto resource = read(name);
    size = resource ? resource->size() : 0;
    if (!resource)
        return nullptr;
    return handedOut.emplace_back(std::make_unique<std::string>(std::move(*resource)))->data();
}

void CResourceStore2::freeResource(const char* pointer)
{
    std::erase_if(handedOut, [&](const auto& buffer) { return buffer->data() == pointer; });
}

namespace Orbel::Resource
{
CResourceStore::CResourceStore() : records(olderForm) {}

int CResourceStore::loadResources(const char* data, long size)
{
    const bool readable = data && size > 0 && std::uint64_t(size) <= Core::kLargestForeignSize;
    std::string copy(readable ? data : "", readable ? size_t(size) : 0); // reading changes it
    return records.read("resource", copy);
}

char* CResourceStore::getResource(const char* name, unsigned long& size) const
{
    const auto found = name ? records.find(name) : string_view();
    size = found.size();
    return const_cast<char*>(found.data()); // the caller may change what it got, as in the current form
}
}

namespace
{
bool isCurrentForm(string_view data)
{
    return data.starts_with(currentForm);
}

// What SetResourcePtr has bound.
class Binding
{
public:
    void bind(const char* data, long size)
    {
        if (isCurrentForm({data, size_t(std::max(size, 0L))}))
        {
            current.emplace_back(data, size);
            return;
        }
        if (!older)
            older.emplace();
        older->loadResources(data, size);
    }

    char* get(const char* name, unsigned long& size)
    {
        if (!current.empty())
            return current.back().getResource(name, size);
        size = 0;
        return older ? older->getResource(name, size) : nullptr;
    }

    void close(const char* pointer)
    {
        for (CResourceStore2& store : current)
            store.freeResource(pointer);
    }

private:
    std::vector<CResourceStore2> current; // the last one answers; the former keep what they have handed out
    std::optional<Orbel::Resource::CResourceStore> older;
};

// A plain pointer, so that the end of a thread has nothing to clean up and the bundle can be unloaded.
thread_local Binding* bound = nullptr;
}

void SetResourcePtr(const char* block, long size)
{
    if (!block)
        return;
    if (!bound)
        bound = new Binding;
    bound->bind(block, size);
}

char* GetResource(const char* name, unsigned long& size)
{
    size = 0;
    return bound && name ? bound->get(name, size) : nullptr;
}

void closeResource(const char* pointer)
{
    if (bound)
        bound->close(pointer);
}

void FreeResources()
{
    delete bound;
    bound = nullptr;
}

std::optional<std::string> Orbel::readResource(const char* block, size_t size, const char* name)
{
    if (!block || size > Core::kLargestForeignSize)
        return {};
    if (isCurrentForm({block, size}))
        return CResourceStore2(block, long(size)).read(name);
    Resource::CResourceStore store;
    unsigned long length = 0;
    store.loadResources(block, long(size));
    const char* const resource = store.getResource(name, length);
    return resource ? std::optional(std::string(resource, length)) : std::nullopt;
}
