// SPDX-License-Identifier: GPL-3.0-or-later
// The base class of everything in the toolkit that has several users: it lives as long as somebody holds a
// reference to it.
//
// Whoever stores a pointer calls remember, whoever drops it calls forget. A new object has one reference,
// which belongs to its creator. The count is atomic, because code of the audio thread may hold shared
// objects, too; the thread that drops the last reference destroys the object.
#pragma once

#include <atomic>
#include <cstdint>

namespace Tovra
{
class CBaseObject
{
public:
    CBaseObject() = default;
    // A copy is a new object with one reference.
    CBaseObject(const CBaseObject&) {}
    CBaseObject& operator=(const CBaseObject&) = delete;

    // [window thread]  A message from another object. Messages are compared by pointer; 0 means that this one
    // was not understood.
    virtual long notify(CBaseObject* sender, const char* message);
    virtual ~CBaseObject() = default;
    // [any thread]
    virtual void forget();
    virtual void remember();

    // [any thread]  For tests: another thread may change it at any time.
    std::int64_t getReferenceCount() const { return references.load(); }

private:
    std::atomic<std::int64_t> references = 1;
};
}
