// SPDX-License-Identifier: GPL-3.0-or-later
// Bitmaps, fonts and factory data by name, from blocks that lie in the bundle.
//
// A block is fetched from in one of three ways:
// - readResource, for one resource. It keeps nothing.
// - CResourceStore2 over a block of the current form, Resource::CResourceStore over one of the older form.
// - SetResourcePtr, GetResource as needed, FreeResources: for code that does not know the block.
//   Each thread has a binding of its own, so that instances which are made at the same time on several
//   threads do not take each other's resources away. Within a thread these calls do not nest.
//
// Every fetch unpacks anew: callers keep what they get. The two forms stand in CResourceStore2.cpp and in
// ResourceStore.cpp. Blocks are checked as untrusted input is: what is damaged is not found.
#pragma once

#include "Orbel/storage/CResourceStore2.h"
#include "Orbel/storage/RecordContainer.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

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
    // The same with a diagnosis.
    Orbel::Diagnosis read(std::string_view block);

    // The resource itself, which belongs to the store and is valid until the next loadResources. Null with a
    // size of 0 if there is none of that name.
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
