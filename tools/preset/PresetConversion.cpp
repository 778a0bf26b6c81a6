// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/preset/PresetConversion.h"

#include "CORE/File.h"
#include "CORE/FileReplacementGroup.h"
#include "Sonvex/FileNames.h"
#include "presets/PresetNames.h"
#include "tools/common/Interruption.h"
#include "tools/common/OutputFile.h"
#include "tools/common/Text.h"
#include "tools/common/ToolError.h"
#include "tools/preset/PresetEffect.h"

#include <filesystem>

namespace lodex
{
namespace
{
namespace fs = std::filesystem;

// Makes the missing folders of a path, and removes them again if nothing was written.
class OutputFolder
{
public:
    explicit OutputFolder(const std::string& path)
    {
        std::error_code error;
        for (fs::path part = fs::absolute(path, error); !fs::exists(part, error); part = part.parent_path())
            made.push_back(part);
        fs::create_directories(path, error);
        if (error)
            throw ToolError("cannot make the folder " + printable(path) + ": " + error.message());
    }
    OutputFolder(const OutputFolder&) = delete;
    OutputFolder& operator=(const OutputFolder&) = delete;
    ~OutputFolder()
    {
        std::error_code notEmpty;
        for (const fs::path& each : made)
            fs::remove(each, notEmpty);
    }

    void keep() { made.clear(); }

private:
    std::vector<fs::path> made; // the deepest first
};

// As the library names it.
std::string fileName(int ordinal, const std::string& name)
{
    std::string number = std::to_string(ordinal);
    number.insert(0, number.size() < 2, '0');
    return Tovra::fileNameFor(number + '-' + Tovra::sanitizedName(name), ".dks");
}

void requireFree(const fs::path& path, bool force)
{
    std::error_code unknown;
    if (!force && fs::symlink_status(path, unknown).type() != fs::file_type::not_found)
        throw ToolError(printable(path.string()) + " is there already; --force replaces it");
}

std::string imageOf(PresetEffect& effect, const fs::path& path)
{
    return effect.programFile(getFileName(path.c_str()));
}

int convertOne(const PresetFile& file, const std::string& output, bool force)
{
    requireFree(output, force);
    PresetEffect effect;
    effect.load(file, 0, file.type);
    const std::string image = imageOf(effect, output);
    requireWritten(output, Core::File::replaceFile(output.c_str(), image.data(), image.size()));
    return 1;
}

int convertSeveral(const PresetFile& file, const std::string& output, bool force)
{
    if (output.empty() || (fs::exists(output) && !fs::is_directory(output)))
        throw ToolError(inQuotes(output) + " is not a folder, and there are " +
                        std::to_string(file.presets.size()) + " presets to write");
    OutputFolder folder(output);
    Core::FileReplacementGroup files(output.c_str()); // destroyed, and so removed, before the folder
    for (size_t i = 0; i < file.presets.size(); ++i)
    {
        if (file.presets[i].chunk.empty())
            continue;
        stopIfInterrupted();
        PresetEffect effect;
        effect.load(file, i, file.type);
        const fs::path path = fs::path(output) / fileName(int(i) + 1, effect.content().name);
        requireFree(path, force);
        const std::string image = imageOf(effect, path);
        requireWritten(path, files.write(path.c_str(), image.data(), image.size()));
    }
    requireWritten(output, files.commit());
    folder.keep();
    return files.getCommittedCount();
}
}

int convertPresets(const PresetFile& file, const std::string& output, bool force)
{
    return file.presets.size() == 1 ? convertOne(file, output, force) : convertSeveral(file, output, force);
}
}
