// Where the bytes of a PNG picture come from: a file or a resource.
//
// A stream ends where its bytes end: the decoder that asks for more is told so and gives up there.
#pragma once

#include <cstdio>

struct png_struct_def;

namespace Tovra
{
// A picture among a window system's own resources. This system has none.
struct CResourceDescription
{
};

// [window thread]  As all streams.
class ITovraPNGStream
{
public:
    ITovraPNGStream() = default;
    ITovraPNGStream(const ITovraPNGStream&) = delete;
    ITovraPNGStream& operator=(const ITovraPNGStream&) = delete;
    virtual ~ITovraPNGStream() = default;

    // The next count bytes. False if so many are not left.
    virtual bool read(unsigned char* target, unsigned long count) = 0;

    // The decoder's way to the stream, which is its I/O pointer. Does not return when the bytes have ended.
    static void readCallback(png_struct_def* png, unsigned char* target, unsigned long count);
};

class PNGFileStream : public ITovraPNGStream
{
public:
    ~PNGFileStream() override;

    bool open(const char* path);
    bool read(unsigned char* target, unsigned long count) override;

private:
    std::FILE* file = nullptr;
};

// From the block of resources that is bound to this thread.
class PNGNewResourceStream : public ITovraPNGStream
{
public:
    ~PNGNewResourceStream() override;

    // False if there is no such resource, or an empty one.
    bool open(const char* name);
    // A read past the end leaves the target as it is.
    bool read(unsigned char* target, unsigned long count) override;

private:
    const char* data = nullptr;
    unsigned long size = 0;
    unsigned long position = 0;
};

// From a window system's own resources: never opens.
class PNGResourceStream : public ITovraPNGStream
{
public:
    bool open(const CResourceDescription&) { return false; }
    bool read(unsigned char*, unsigned long) override { return false; }
};
}
