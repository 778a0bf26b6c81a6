// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/CFastFile.h"

#include "CORE/File.h"
#include "CORE/Format.h"

#include <climits>

CFastFile::~CFastFile()
{
    if (reading)
        std::fclose(reading);
}

bool CFastFile::open(const char* name, unsigned flags)
{
    if (reading)
        std::fclose(reading);
    reading = nullptr;
    writing.reset();
    if (flags & kWriting)
    {
        if (!writing.emplace(name).isOpen())
            writing.reset();
        return writing.has_value();
    }
    return bool(Core::File::openRegularFile(name, reading));
}

unsigned long long CFastFile::read(void* out, unsigned long long size)
{
    return reading && out ? std::fread(out, 1, size, reading) : 0;
}

bool CFastFile::write(const void* data, unsigned long long size)
{
    return writing && writing->write(data, size);
}

bool CFastFile::close()
{
    const bool done = reading ? std::fclose(reading) == 0 : writing && writing->commit();
    reading = nullptr;
    writing.reset();
    return done;
}

bool CFastFile::writeFile(const char* name, const void* data, unsigned long long size, int)
{
    return bool(Core::File::replaceFile(name, data, size));
}

std::string CFastFile::formatName(const char* format, va_list arguments)
{
    return Core::formatBounded(PATH_MAX, format, arguments);
}
