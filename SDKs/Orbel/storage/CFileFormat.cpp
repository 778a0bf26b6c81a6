// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/CFileFormat.h"

#include "CORE/File.h"
#include "CORE/ForeignData.h"
#include "CORE/Utf8.h"
#include "Sonvex/FileNames.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

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
constexpr size_t byteSizeCounted = 8; // it counts the bytes from here on
constexpr size_t kindMagic = 8;
constexpr size_t version = 12;
constexpr size_t pluginID = 16;
constexpr size_t pluginVersion = 20;
constexpr size_t programName = 28;
constexpr size_t longestProgramName = 27;
}

constexpr std::string_view commonMagic = "CcnK";
constexpr size_t magicLength = 4;
constexpr std::uint32_t writtenVersion = 1;

std::string_view magicAt(std::string_view image, size_t at)
{
    return image.substr(std::min(at, image.size()), magicLength);
}

Core::FileResult saveImage(const char* path, const std::string& image)
{
    if (image.empty())
        return Core::FileResult::failed(EFBIG);
    return Core::File::replaceFile(path, image.data(), image.size());
}

Diagnosis readWhole(const char* path, std::string& content)
{
    const auto result = Core::File::readFile(path, Core::kLargestForeignSize, content);
    return result ? Diagnosis() : refused(0, result.problem);
}

void handOver(std::string_view content, char** buffer, long& size)
{
    *buffer = new char[content.size()];
    content.copy(*buffer, content.size());
    size = long(content.size());
}
}

Diagnosis CFileFormat::loadFromFile(const char* path, char** buffer, long& size)
{
    std::string content;
    Diagnosis found = readWhole(path, content);
    if (found.taken)
        handOver(content, buffer, size);
    return found;
}

Core::FileResult CFileFormat::saveToFile(const char* path, const char* buffer, long size)
{
    if (size < 0)
        return Core::FileResult::failed(EINVAL);
    return Core::File::replaceFile(path, buffer, size_t(size));
}

void CFileFormat::releaseBuffer(char* buffer)
{
    delete[] buffer;
}

Diagnosis CFileFormatCppHeader::loadFromFile(const char*, char**, long&)
{
    return refused(0, "header files are not read");
}

Core::FileResult CFileFormatCppHeader::saveToFile(const char*, const char*, long)
{
    return {"header files are not written"};
}

bool CPresetFormat::isKind(std::string_view image) const
{
    return magicAt(image, header::magic) == commonMagic && magicAt(image, header::kindMagic) == layout.magic;
}

Diagnosis CPresetFormat::readHeader(std::string_view image) const
{
    if (image.size() < layout.headerSize)
        return refused(image.size(), cutOff(image.size(), layout.headerSize) + " of its header");
    if (const auto magic = magicAt(image, header::magic); magic != commonMagic)
        return refused(header::magic, "it begins with " + quoted(magic) + ", not " + quoted(commonMagic));
    char own[magicLength];
    Core::writeBig32(own, std::uint32_t(getPluginID()));
    if (const auto id = magicAt(image, header::pluginID); id != std::string_view(own, magicLength))
        return refused(header::pluginID, "it is of another plug-in: its id is " + quoted(id) + ", not " +
                                             quoted({own, magicLength}));
    if (const auto kind = magicAt(image, header::kindMagic); kind != layout.magic)
        return refused(header::kindMagic, "its kind is " + quoted(kind) + ", not " + quoted(layout.magic));
    return {};
}

Diagnosis CPresetFormat::unwrap(std::string_view image, std::string_view& payload) const
{
    if (image.size() > Core::kLargestForeignSize)
        return refused(Core::kLargestForeignSize, "it is longer than 64 MiB");
    if (Diagnosis found = readHeader(image); !found.taken)
        return found;
    const std::uint64_t declared = Core::readBig32(image.data() + layout.payloadSize);
    const std::string_view rest = image.substr(layout.headerSize);
    if (declared == 0)
        return refused(layout.payloadSize, "it declares a chunk of no bytes");
    const std::string missing =
        declared > rest.size() ? cutOff(image.size(), layout.headerSize + declared) : std::string();
    if (rest.empty())
        return refused(image.size(), missing);
    payload = rest.substr(0, declared);
    return damaged(image.size(), missing);
}

Diagnosis CPresetFormat::loadFromFile(const char* path, char** buffer, long& size)
{
    std::string content;
    Diagnosis found = readWhole(path, content);
    std::string_view payload;
    if (found.taken)
        found = unwrap(content, payload);
    if (found.taken)
        handOver(payload, buffer, size);
    return found;
}

std::string CPresetFormat::image(std::string_view programName, const char* payload, long size) const
{
    if (!payload || size < 0 || std::uint64_t(size) > Core::kLargestForeignSize - layout.headerSize)
        return {};
    std::string out(layout.headerSize, '\0');
    commonMagic.copy(out.data() + header::magic, magicLength);
    std::memcpy(out.data() + header::kindMagic, layout.magic, magicLength);
    const auto name = Core::Utf8::cut(programName, header::longestProgramName);
    name.copy(out.data() + header::programName, name.size());
    const auto put = [&](size_t at, size_t word) { Core::writeBig32(out.data() + at, std::uint32_t(word)); };
    put(header::byteSize, layout.headerSize - header::byteSizeCounted + size_t(size));
    put(header::version, writtenVersion);
    put(header::pluginID, size_t(getPluginID()));
    put(header::pluginVersion, writtenVersion);
    put(layout.payloadSize, size_t(size));
    return out.append(payload, size_t(size));
}

Core::FileResult CPresetFormatFXP::saveToFile(const char* path, const char* buffer, long size)
{
    return saveImage(path, wrap(getFileName(path), buffer, size));
}

std::string CPresetFormatFXP::wrap(const char* programName, const char* payload, long size) const
{
    return image(programName ? programName : "", payload, size);
}

Core::FileResult CPresetFormatFXB::saveToFile(const char* path, const char* buffer, long size)
{
    return saveImage(path, wrap(buffer, size));
}

std::string CPresetFormatFXB::wrap(const char* payload, long size) const
{
    return image("", payload, size);
}
}
