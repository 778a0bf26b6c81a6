#include "Orbel/storage/CFileFormat.h"

#include "CORE/File.h"
#include "CORE/ForeignData.h"
#include "Sonvex/FileNames.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace Orbel
{
constinit CFileFormat gFileFormatNone;
constinit CFileFormatCppHeader gFileFormatCppHeader;
constinit CPresetFormatFXP gPresetFormatFXP;
constinit CPresetFormatFXB gPresetFormatFXB;
CPresetFormatFXP* const kPresetFormatFXP = &gPresetFormatFXP;
CPresetFormatFXB* const kPresetFormatFXB = &gPresetFormatFXB;

namespace
{
// The header of the two wrappers; where they differ stands in their layouts. Integers are big-endian.
namespace header
{
constexpr size_t magic = 0; // "CcnK"
constexpr size_t byteSize = 4;
constexpr size_t byteSizeCounted = 8; // it is that of all from here on
constexpr size_t kindMagic = 8;
constexpr size_t version = 12;
constexpr size_t pluginID = 16;
constexpr size_t pluginVersion = 20;
constexpr size_t programName = 28;
constexpr size_t longestProgramName = 27;
}

constexpr char commonMagic[] = "CcnK";
constexpr size_t magicLength = 4;
constexpr std::uint32_t writtenVersion = 1;

bool hasMagic(const char* at, const char* magic)
{
    return std::memcmp(at, magic, magicLength) == 0;
}

void saveImage(const char* path, const std::string& image)
{
    if (!image.empty())
        Core::File::replaceFile(path, image.data(), image.size());
}

// A plain file, open for reading, of no more bytes than are read. Opening it never waits for anyone.
class InputFile
{
public:
    explicit InputFile(const char* path)
    {
        const int descriptor = path ? open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK) : -1;
        struct stat info;
        if (descriptor < 0)
            return;
        if (fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode) ||
            std::uint64_t(info.st_size) > Core::kLargestForeignSize || !(stream = fdopen(descriptor, "rb")))
            close(descriptor);
    }
    ~InputFile()
    {
        if (stream)
            std::fclose(stream);
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    bool isOpen() const { return stream != nullptr; }
    bool read(char* out, size_t bytes) { return std::fread(out, 1, bytes, stream) == bytes; }
    // Puts what is left of the file, from least to most bytes of it, into a new buffer. Leaves both outputs
    // if that fails.
    void readRest(std::uint64_t least, std::uint64_t most, char*& buffer, long& size)
    {
        const std::uint64_t length = std::min(most, std::uint64_t(fsize(stream)));
        if (length < least || length > Core::kLargestForeignSize)
            return;
        auto bytes = std::make_unique_for_overwrite<char[]>(length);
        if (!read(bytes.get(), length))
            return;
        buffer = bytes.release();
        size = long(length);
    }

private:
    FILE* stream = nullptr;
};
}

void CFileFormat::loadFromFile(const char* path, char** buffer, long& size)
{
    InputFile file(path);
    if (file.isOpen())
        file.readRest(0, Core::kLargestForeignSize, *buffer, size);
}

void CFileFormat::saveToFile(const char* path, const char* buffer, long size)
{
    if (size >= 0)
        Core::File::replaceFile(path, buffer, size_t(size));
}

void CFileFormat::releaseBuffer(char* buffer)
{
    delete[] buffer;
}

std::optional<std::uint32_t> CPresetFormat::declaredSize(const char* from) const
{
    const bool mine = hasMagic(from + header::magic, commonMagic) &&
                      Core::readBig32(from + header::pluginID) == std::uint32_t(getPluginID()) &&
                      hasMagic(from + header::kindMagic, layout.magic);
    return mine ? std::optional(Core::readBig32(from + layout.payloadSize)) : std::nullopt;
}

void CPresetFormat::loadFromFile(const char* path, char** buffer, long& size)
{
    InputFile file(path);
    std::string start(layout.headerSize, '\0');
    if (!file.isOpen() || !file.read(start.data(), start.size()))
        return;
    if (const auto declared = declaredSize(start.data()))
        file.readRest(1, *declared, *buffer, size);
}

bool CPresetFormat::unwrap(const char* data, long size, const char** payload, long* payloadSize) const
{
    const long headerSize = long(layout.headerSize);
    if (!data || size <= headerSize || std::uint64_t(size) > Core::kLargestForeignSize)
        return false;
    const auto declared = declaredSize(data);
    if (!declared || *declared == 0)
        return false;
    *payload = data + headerSize;
    *payloadSize = std::min(long(*declared), size - headerSize);
    return true;
}

std::string CPresetFormat::image(const char* programName, const char* payload, long size) const
{
    if (!payload || size < 0 || std::uint64_t(size) > Core::kLargestForeignSize - layout.headerSize)
        return {};
    std::string out(layout.headerSize, '\0');
    std::memcpy(out.data() + header::magic, commonMagic, magicLength);
    std::memcpy(out.data() + header::kindMagic, layout.magic, magicLength);
    std::memcpy(out.data() + header::programName, programName,
                strnlen(programName, header::longestProgramName));
    const auto put = [&](size_t at, size_t word) { Core::writeBig32(out.data() + at, std::uint32_t(word)); };
    put(header::byteSize, layout.headerSize - header::byteSizeCounted + size_t(size));
    put(header::version, writtenVersion);
    put(header::pluginID, size_t(getPluginID()));
    put(header::pluginVersion, writtenVersion);
    put(layout.payloadSize, size_t(size));
    return out.append(payload, size_t(size));
}

void CPresetFormatFXP::saveToFile(const char* path, const char* buffer, long size)
{
    saveImage(path, wrap(getFileName(path), buffer, size));
}

std::string CPresetFormatFXP::wrap(const char* programName, const char* payload, long size) const
{
    return image(programName ? programName : "", payload, size);
}

void CPresetFormatFXB::saveToFile(const char* path, const char* buffer, long size)
{
    saveImage(path, wrap(buffer, size));
}

std::string CPresetFormatFXB::wrap(const char* payload, long size) const
{
    return image("", payload, size);
}
}
