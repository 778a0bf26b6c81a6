// SPDX-License-Identifier: GPL-3.0-or-later
// A file that a command writes: it appears only when it is complete (CORE/FileReplacement.h), and every
// failure is a ToolError with the file's name.
#pragma once

#include "CORE/FileReplacement.h"

#include <string>

namespace lodex
{
class OutputFile
{
public:
    // Opens at once, so that a target that can't be written is known before the work begins. A ToolError
    // then; the same for one that exists and is not a regular file. A link is followed.
    explicit OutputFile(const std::string& name);

    // What the messages call it: the path as given.
    const std::string& name() const { return path; }
    // Open for reading and writing; belongs to this object.
    int descriptor() const { return file.descriptor(); }

    void write(const void* data, size_t bytes);
    // Brings what was written to the disk, so that little is left for commit to fail with.
    void flush();
    // Moves the file to its place.
    void commit();

private:
    void require(bool done) const;

    std::string path;
    Core::FileReplacement file;
};

// Throws a ToolError for a file that could not be written.
void requireWritten(const std::string& path, const Core::FileResult& result);
}
