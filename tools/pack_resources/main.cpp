// SPDX-License-Identifier: GPL-3.0-or-later
// pack_resources BLOCK NAME=FILE[:zlib|:scrambled]...
#include "CORE/File.h"
#include "tools/pack_resources/ResourcePacker.h"

#include <cstdio>
#include <exception>
#include <vector>

int main(int argc, char** argv)
{
    if (argc < 2)
    {
        std::fputs("usage: pack_resources BLOCK NAME=FILE[:zlib|:scrambled]...\n", stderr);
        return 2;
    }
    try
    {
        std::vector<lodex::Resource> resources;
        for (int i = 2; i < argc; ++i)
            resources.push_back(lodex::readResource(argv[i]));
        const std::string block = lodex::makeBlock(resources);
        const auto written = Core::File::replaceFile(argv[1], block.data(), block.size());
        if (written)
            return 0;
        std::fprintf(stderr, "pack_resources: cannot write %s: %s\n", argv[1], written.problem.c_str());
    }
    catch (const std::exception& error)
    {
        std::fprintf(stderr, "pack_resources: %s\n", error.what());
    }
    return 2;
}
