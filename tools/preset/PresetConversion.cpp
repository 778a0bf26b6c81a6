#include "tools/preset/PresetConversion.h"

#include "Sonvex/FileNames.h"
#include "presets/PresetNames.h"
#include "tools/common/Interruption.h"
#include "tools/common/OutputFile.h"
#include "tools/common/Text.h"
#include "tools/common/ToolError.h"
#include "tools/preset/PresetEffect.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace lodex
{
namespace
{
namespace fs = std::filesystem;

// Makes what is missing of a folder, and takes it away again if nothing came of it.
class OutputFolder
{
public:
    explicit OutputFolder(const std::string& path) : name(path)
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

    // Puts everything in the folder on the disk: one by one would take long for many files.
    void flush() const
    {
        const int fd = open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        const bool done = fd >= 0 && syncfs(fd) == 0;
        const int error = errno;
        if (fd >= 0)
            close(fd);
        if (!done)
            throw ToolError("cannot write to " + printable(name) + ": " + std::strerror(error));
    }
    void keep() { made.clear(); }

private:
    std::string name;
    std::vector<fs::path> made; // the deepest first
};

// As the library names it.
std::string fileName(int ordinal, const std::string& name)
{
    std::string number = std::to_string(ordinal);
    number.insert(0, number.size() < 2, '0');
    return Tovra::fileNameFor(number + '-' + Tovra::bearableName(name), ".dks");
}

void requireFree(const fs::path& path, bool force)
{
    std::error_code unknown;
    if (!force && fs::symlink_status(path, unknown).type() != fs::file_type::not_found)
        throw ToolError(printable(path.string()) + " is there already; --force replaces it");
}

std::unique_ptr<OutputFile> write(const fs::path& path, PresetEffect& effect)
{
    auto file = std::make_unique<OutputFile>(path.string());
    const std::string content = effect.programFile(getFileName(path.c_str()));
    file->write(content.data(), content.size());
    return file;
}

int convertOne(const PresetFile& file, const std::string& output, bool force)
{
    requireFree(output, force);
    PresetEffect effect;
    effect.load(file, 0, file.type);
    const auto written = write(output, effect);
    written->flush();
    written->commit();
    return 1;
}

int convertSeveral(const PresetFile& file, const std::string& output, bool force)
{
    if (output.empty() || (fs::exists(output) && !fs::is_directory(output)))
        throw ToolError(inQuotes(output) + " is not a folder, and there are " +
                        std::to_string(file.presets.size()) + " presets to write");
    OutputFolder folder(output);
    std::vector<std::unique_ptr<OutputFile>> files; // destroyed, and so removed, before the folder
    for (size_t i = 0; i < file.presets.size(); ++i)
    {
        if (file.presets[i].chunk.empty())
            continue;
        stopIfInterrupted();
        PresetEffect effect;
        effect.load(file, i, file.type);
        const fs::path path = fs::path(output) / fileName(int(i) + 1, effect.content().name);
        requireFree(path, force);
        files.push_back(write(path, effect));
        files.back()->endWriting(); // there may be more than a process can have open
    }
    folder.flush();
    for (const auto& each : files)
        each->commit();
    folder.keep();
    return int(files.size());
}
}

int convertPresets(const PresetFile& file, const std::string& output, bool force)
{
    return file.presets.size() == 1 ? convertOne(file, output, force) : convertSeveral(file, output, force);
}
}
