// SPDX-License-Identifier: GPL-3.0-or-later
// A smart pointer to a shared object: remembers it when constructed and forgets it when destroyed.
//
// Whoever calls into a view holds one meanwhile, since the call may remove the view from the tree.
#pragma once

namespace Tovra
{
template <typename T>
class Kept
{
public:
    Kept() = default;
    explicit Kept(T* object) : held(object)
    {
        if (held != nullptr)
            held->remember();
    }
    explicit Kept(T& object) : held(&object) { held->remember(); }
    Kept(const Kept& other) : Kept(other.held) {}
    ~Kept() { reset(); }

    // Takes over the caller's reference, such as that of a new object.
    static Kept adopt(T* object)
    {
        Kept kept;
        kept.held = object;
        return kept;
    }

    Kept& operator=(const Kept& other)
    {
        reset(other.held);
        return *this;
    }

    // Remembers the new object before it forgets the old one, whose destructor may do anything.
    void reset(T* object = nullptr)
    {
        if (object != nullptr)
            object->remember();
        T* const former = held;
        held = object;
        if (former != nullptr)
            former->forget();
    }

    T* get() const { return held; }
    T* operator->() const { return held; }
    explicit operator bool() const { return held != nullptr; }

private:
    T* held = nullptr;
};
}
