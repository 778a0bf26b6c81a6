// SPDX-License-Identifier: GPL-3.0-or-later
// Read the bytes of a PNG picture, from a file or from a resource.
//
// When a stream has no more bytes, the decoder stops with an error.
#pragma once

#include <cstddef>
#include <cstdio>
#include <vector>

struct png_struct_def;

namespace Tovra
{
// Names a picture among the resources of the operating system. Here there are none.
struct CResourceDescription
{
};

// [window thread]
class ITovraPNGStream
{
public:
    ITovraPNGStream() = default;
    ITovraPNGStream(const ITovraPNGStream&) = delete;
    ITovraPNGStream& operator=(const ITovraPNGStream&) = delete;
    virtual ~ITovraPNGStream() = default;

    // Reads the next count bytes. False if there are fewer.
    virtual bool read(unsigned char* target, unsigned long count) = 0;

    // libpng's read function; the stream is its I/O pointer. On a failed read it jumps to libpng's error
    // handler.
    static void readCallback(png_struct_def* png, unsigned char* target, unsigned long count);
};

class PNGFileStream : public ITovraPNGStream
{
public:
    ~PNGFileStream() override;

    bool open(const char* path);
    bool read(unsigned char* target, unsigned long count) override;
    // The bytes that have not been read yet; none if there are more than limit.
    std::vector<unsigned char> readAll(std::size_t limit);

private:
    std::FILE* file = nullptr;
};

// Reads from the block of resources that is bound to this thread.
class PNGNewResourceStream : public ITovraPNGStream
{
public:
    ~PNGNewResourceStream() override;

    // False if there is no such resource, or if it is empty.
    bool open(const char* name);
    // If there are fewer bytes than count, the target is left unchanged.
    bool read(unsigned char* target, unsigned long count) override;
    // The bytes that have not been read yet.
    std::vector<unsigned char> readAll();

private:
    const char* data = nullptr;
    unsigned long size = 0;
    unsigned long position = 0;
};

// Reads from the resources of the operating system: cannot be opened.
class PNGResourceStream : public ITovraPNGStream
{
public:
    bool open(const CResourceDescription&) { return false; }
    bool read(unsigned char*, unsigned long) override { return false; }
};
}
