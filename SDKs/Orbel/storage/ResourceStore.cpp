// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/ResourceStore.h"

#include "CORE/ForeignData.h"

#include <algorithm>
#include <vector>

using namespace std::literals;
using std::string_view;

namespace
{
constexpr int refusedBlock = 2; // the contract's answer for the older form

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

}

namespace Orbel::Resource
{
CResourceStore::CResourceStore() : records(olderForm) {}

int CResourceStore::loadResources(const char* data, long size)
{
    return read({data ? data : "", data && size > 0 ? size_t(size) : 0}).taken ? 0 : refusedBlock;
}

Diagnosis CResourceStore::read(string_view block)
{
    if (block.size() > Core::kLargestForeignSize)
        block = {};
    std::string copy(block); // reading changes it
    UnpackingAllowance any;
    return records.read("resource", copy, any);
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
    std::vector<CResourceStore2> current; // the last one answers; the others own what they have handed out
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
