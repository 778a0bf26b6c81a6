// The root of everything in the toolkit that has several users: it lives as long as somebody holds it.
//
// Whoever stores a pointer calls remember, whoever drops it calls forget. A new object comes with one
// reference, which its creator holds. Counts are atomic, because audio-side code may hold shared objects,
// too; the thread that drops the last reference destroys the object.
#pragma once

#include <atomic>
#include <cstdint>

namespace Tovra
{
class CBaseObject
{
public:
    CBaseObject() = default;
    // A copy is an object of its own, with one reference.
    CBaseObject(const CBaseObject&) {}
    CBaseObject& operator=(const CBaseObject&) = delete;

    // [window thread]  A message from another object. 0: not for this one. Messages are compared by pointer.
    virtual long notify(CBaseObject* sender, const char* message);
    virtual ~CBaseObject() = default;
    // [any thread]
    virtual void forget();
    virtual void remember();

    // [any thread]  For tests: it may be out of date at once.
    std::int64_t getReferenceCount() const { return references.load(); }

private:
    std::atomic<std::int64_t> references = 1;
};
}
