// SPDX-License-Identifier: GPL-3.0-or-later
// Bounded texts: a view of a fixed character buffer, and the smallest interface to a text.
//
// A CString never reads or writes past the buffer that it views, and what it holds always ends with a NUL:
// a longer text is cut to capacity - 1 characters.
#pragma once

namespace Core
{
class CString
{
public:
    // Views text, which the caller owns and keeps alive; size in bytes, the final NUL included.
    CString(char* text, int size) : buffer(text), capacity(size) {}
    CString(const CString&) = delete;
    CString& operator=(const CString&) = delete;
    virtual ~CString() = default;

    // Copies text, cut to capacity - 1 characters. Null counts as empty.
    virtual void set(const char* text);
    // 0 if the first capacity - 1 characters of both texts are equal, otherwise the sign of strncmp.
    virtual int compare(const char* text) const;
    // Copies into out, which holds at least the capacity; the rest of out up to the capacity becomes 0.
    virtual void copyTo(char* out) const;

    const char* get() const { return buffer; }
    char* get() { return buffer; }

private:
    char* buffer;
    int capacity;
};

// A CString with its own buffer of Capacity bytes, empty at first.
template <int Capacity>
class CStringBufferd : public CString
{
public:
    CStringBufferd() : CString(storage, Capacity) {}

private:
    char storage[Capacity] = {};
};

// A text that somebody else owns, to be filled by the callee.
class IString
{
public:
    virtual void set(const char* text) = 0;

protected:
    ~IString() = default;
};
}
