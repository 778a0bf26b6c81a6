// Bitmaps, fonts and factory data by name, from blocks that lie in the bundle.
//
// A block is fetched from in one of three ways:
// - readResource, for one resource. It keeps nothing.
// - CResourceStore2 over a block of the current form, Resource::CResourceStore over one of the older form.
// - SetResourcePtr, GetResource as needed, FreeResources: the bracket of code that does not know the block.
//   Each thread has a binding of its own, so that instances which are made at the same time on several
//   threads do not take each other's resources away. Within a thread brackets do not nest.
//
// Every fetch unpacks anew: callers keep what they get. The two forms stand in ResourceStore.cpp. Blocks are
// checked as foreign data is: what is damaged is not found.
#pragma once

#include "Orbel/storage/RecordContainer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Orbel
{
// A block within the bundle, which lives as long as the bundle.
struct ResourceBlock
{
    const char* data;
    size_t size;
};

// The resource of that name from a block of either form; nothing if there is none. [any thread but audio]
std::optional<std::string> readResource(const char* block, size_t size, const char* name);
}

// A block of the current form, "RESOURCE2". The block is not copied: it has to outlive the store.
// [any thread but audio]  One thread at a time; read may be called by several.
class CResourceStore2
{
public:
    // A block that is damaged ahead of its resources gives a store without any.
    CResourceStore2(const char* block, long size);

    std::optional<std::string> read(const char* name) const;

    // A new copy at each call, for freeResource; what is not freed goes with the store. Null with a size of
    // 0 if there is no such resource.
    char* getResource(const char* name, unsigned long& size);
    // Anything but such a copy is ignored.
    void freeResource(const char* pointer);

private:
    struct Entry
    {
        std::string name;
        std::uint32_t rawSize;
        std::int32_t storedSize; // above 0: a zlib stream of so many bytes; else scrambled
        std::uint32_t offset;    // in the payload
    };

    void readEntries(std::string_view index, std::uint64_t count);
    const Entry* findEntry(std::string_view name) const;

    std::vector<Entry> entries;
    std::string_view payload;
    std::vector<std::unique_ptr<std::string>> handedOut;
};

namespace Orbel::Resource
{
// A block of the older form, "resource".
// [any thread but audio]  One thread at a time; getResource may be called by several.
class CResourceStore
{
public:
    CResourceStore();

    // Takes what the block holds in place of what was here; the block is copied. 0: taken; 2: refused, as its
    // header is bad. A block whose data cannot be unpacked is taken, and has no resources.
    int loadResources(const char* block, long size);

    // The resource itself, which stays the store's until the next loadResources. Null with a size of 0 if
    // there is none of that name.
    char* getResource(const char* name, unsigned long& size) const;

private:
    Orbel::RecordContainer records;
};
}

// Binds a block to this thread. One of the current form ("RESOURCE...") has to stay where it is until
// FreeResources; any other is copied. Null is ignored. [window thread] [worker]
void SetResourcePtr(const char* block, long size);

// A resource of what is bound, for closeResource; null with a size of 0 if there is none. If blocks of both
// forms are bound, that of the current form answers alone. [the thread that bound it]
char* GetResource(const char* name, unsigned long& size);

// Frees one buffer before its time. Anything else is ignored. [the thread that bound it]
void closeResource(const char* pointer);

// Frees all buffers and unbinds all blocks. [the thread that bound them]
void FreeResources();
