// SPDX-License-Identifier: GPL-3.0-or-later
// Puts files together into a block that Orbel/storage/CResourceStore2.h reads. Runs while the project is
// built: what is wrong stops the build.
#pragma once

#include <span>
#include <string>

namespace lodex
{
struct Resource
{
    std::string name;
    std::string content;
    bool compressed; // as a zlib stream; otherwise scrambled, which is for what is packed already
};

// The resource that an argument of the form "name=file", "name=file:zlib" or "name=file:scrambled" describes;
// the first form is scrambled. Throws std::runtime_error if it has another form or the file cannot be read.
Resource readResource(const std::string& argument);

// The block. Equal resources make equal bytes. Throws std::runtime_error for a name that is empty, longer
// than 255 bytes or there twice, and for what is too large to be read back.
std::string makeBlock(std::span<const Resource> resources);
}
