// A reference to a shared object, remembered from here on and forgotten at the end.
//
// Dispatch holds one to every view that it calls: the call may take the view out of the tree.
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
    Kept(const Kept& other) : Kept(other.held) {}
    ~Kept() { reset(); }

    // Takes over the reference that the caller has, as of a new object.
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

    // The new object is remembered before the old one is forgotten, which may destroy a good deal.
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
