// SPDX-License-Identifier: GPL-3.0-or-later
// The file formats that a preset can be kept in: as it is, or in the wrappers of the VST standard for a
// program (.fxp) and a bank (.fxb) with an opaque payload.
//
// There is one object of each, below; they hold nothing but the plug-in's id, which the first instance of
// the plug-in sets. A file is written beside its target and renamed over it, so that a failed save leaves
// the former file. Files above 64 MiB, and everything that is not a regular file, are not read.
#pragma once

#include "CORE/FileResult.h"
#include "CORE/Relaxed.h"
#include "Orbel/storage/Diagnosis.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Orbel
{
// [window thread] [worker]  Several threads may use one object.
class CFileFormat
{
public:
    // Reads what the file holds into a new buffer, for releaseBuffer. If that fails, both outputs stay as
    // they are: set them to null and 0 first.
    virtual Diagnosis loadFromFile(const char* path, char** buffer, long& size);
    virtual Core::FileResult saveToFile(const char* path, const char* buffer, long size);
    virtual const char* getFileExt() const { return ".none"; }
    // Null is ignored.
    virtual void releaseBuffer(char* buffer);

    virtual ~CFileFormat() = default;
};

// The extension of a header file, and nothing else: it neither reads nor writes.
class CFileFormatCppHeader : public CFileFormat
{
public:
    Diagnosis loadFromFile(const char*, char**, long&) override;
    Core::FileResult saveToFile(const char*, const char*, long) override;
    const char* getFileExt() const override { return ".h"; }
};

// What the two wrappers share: a big-endian header with the plug-in's id, followed by the payload.
class CPresetFormat : public CFileFormat
{
public:
    // Files of another plug-in are not read. 0 at first. [any thread]
    void setPluginID(int id) { pluginID = id; }
    int getPluginID() const { return pluginID; }

    // A payload that the file declares larger than the file goes up to the file's end. One of no bytes is
    // refused.
    Diagnosis loadFromFile(const char* path, char** buffer, long& size) override;

    // The payload within the image of such a file, by the same rules; untouched if the image is refused.
    // [any thread]
    Diagnosis unwrap(std::string_view image, std::string_view& payload) const;
    // Whether an image begins as one of this kind does, of whatever plug-in. [any thread]
    bool isKind(std::string_view image) const;

protected:
    // Where the two headers differ. All bytes between the common start and the payload's size are zero, or
    // the program's name.
    struct Layout
    {
        const char* magic; // four characters
        size_t payloadSize;
        size_t headerSize;
    };

    constexpr explicit CPresetFormat(const Layout& of) : layout(of) {}
    // The header, followed by the payload; empty if they would be more than 64 MiB.
    std::string image(std::string_view programName, const char* payload, long size) const;

private:
    Diagnosis readHeader(std::string_view image) const;

    const Layout& layout;
    Core::Relaxed<int> pluginID = 0; // written whenever an instance is made
};

// A program file.
class CPresetFormatFXP : public CPresetFormat
{
public:
    static constexpr size_t kHeaderSize = 60; // bytes ahead of the payload

    constexpr CPresetFormatFXP() : CPresetFormat(fxp) {}
    // The program's name is the base name of the path.
    Core::FileResult saveToFile(const char* path, const char* buffer, long size) override;
    const char* getFileExt() const override { return ".fxp"; }
    // The image of such a file, with the name cut to 27 bytes, never inside a character; empty if it would be
    // more than 64 MiB. [any thread]
    std::string wrap(const char* programName, const char* payload, long size) const;

private:
    static constexpr Layout fxp{.magic = "FPCh", .payloadSize = 56, .headerSize = kHeaderSize};
};

// A bank file.
class CPresetFormatFXB : public CPresetFormat
{
public:
    static constexpr size_t kHeaderSize = 160; // bytes ahead of the payload

    constexpr CPresetFormatFXB() : CPresetFormat(fxb) {}
    Core::FileResult saveToFile(const char* path, const char* buffer, long size) override;
    const char* getFileExt() const override { return ".fxb"; }
    // The image of such a file; empty if it would be more than 64 MiB. [any thread]
    std::string wrap(const char* payload, long size) const;

private:
    static constexpr Layout fxb{.magic = "FBCh", .payloadSize = 156, .headerSize = kHeaderSize};
};

extern CFileFormat gFileFormatNone;
extern CFileFormatCppHeader gFileFormatCppHeader;
extern CPresetFormatFXP gPresetFormatFXP;
extern CPresetFormatFXB gPresetFormatFXB;
extern CPresetFormatFXP* const kPresetFormatFXP;
extern CPresetFormatFXB* const kPresetFormatFXB;
}
