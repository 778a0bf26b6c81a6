// The file formats that a preset can be kept in: as it is, or in the wrappers of the VST standard for a
// program (.fxp) and a bank (.fxb) with an opaque payload.
//
// There is one object of each, below; they hold nothing but the plug-in's id, which the first instance of
// the plug-in sets. A file is written beside its target and renamed over it, so that a failed save leaves
// the former file. Files above 64 MiB, and what is no plain file, are not read.
#pragma once

#include "CORE/Relaxed.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Orbel
{
// [window thread] [worker]  Several threads may use one object.
class CFileFormat
{
public:
    // Reads what the file holds into a new buffer, for releaseBuffer. If that fails, both outputs stay as
    // they are: set them to null and 0 first.
    virtual void loadFromFile(const char* path, char** buffer, long& size);
    // Writes the file; a failure is not reported.
    virtual void saveToFile(const char* path, const char* buffer, long size);
    virtual const char* getFileExt() const { return ".none"; }
    // Null is ignored.
    virtual void releaseBuffer(char* buffer);

    virtual ~CFileFormat() = default;
};

// The extension of a header file, and nothing else: it neither reads nor writes.
class CFileFormatCppHeader : public CFileFormat
{
public:
    void loadFromFile(const char*, char**, long&) override {}
    void saveToFile(const char*, const char*, long) override {}
    const char* getFileExt() const override { return ".h"; }
};

// What the two wrappers share: a big-endian header with the plug-in's id, and the payload behind it.
class CPresetFormat : public CFileFormat
{
public:
    // Files of another plug-in are not read. 0 at first. [any thread]
    void setPluginID(int id) { pluginID = id; }
    int getPluginID() const { return pluginID; }

    // A payload that the file declares larger than the file goes up to the file's end. One of no bytes is a
    // failure.
    void loadFromFile(const char* path, char** buffer, long& size) override;

    // The payload within the image of such a file, by the same rules. False, and nothing written, if it is
    // no such image. [any thread]
    bool unwrap(const char* data, long size, const char** payload, long* payloadSize) const;

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
    // The header and the payload behind it; empty if they would be more than 64 MiB.
    std::string image(const char* programName, const char* payload, long size) const;

private:
    // What the header, which is whole, says of its payload; nothing if it is not one of ours.
    std::optional<std::uint32_t> declaredSize(const char* from) const;

    const Layout& layout;
    Core::Relaxed<int> pluginID = 0; // written whenever an instance is made
};

// A program file.
class CPresetFormatFXP : public CPresetFormat
{
public:
    constexpr CPresetFormatFXP() : CPresetFormat(fxp) {}
    // The program's name is the base name of the path.
    void saveToFile(const char* path, const char* buffer, long size) override;
    const char* getFileExt() const override { return ".fxp"; }
    // The image of such a file, with the name cut to 27 characters; empty if it would be more than 64 MiB.
    // [any thread]
    std::string wrap(const char* programName, const char* payload, long size) const;

private:
    static constexpr Layout fxp{.magic = "FPCh", .payloadSize = 56, .headerSize = 60};
};

// A bank file.
class CPresetFormatFXB : public CPresetFormat
{
public:
    constexpr CPresetFormatFXB() : CPresetFormat(fxb) {}
    void saveToFile(const char* path, const char* buffer, long size) override;
    const char* getFileExt() const override { return ".fxb"; }
    // The image of such a file; empty if it would be more than 64 MiB. [any thread]
    std::string wrap(const char* payload, long size) const;

private:
    static constexpr Layout fxb{.magic = "FBCh", .payloadSize = 156, .headerSize = 160};
};

extern CFileFormat gFileFormatNone;
extern CFileFormatCppHeader gFileFormatCppHeader;
extern CPresetFormatFXP gPresetFormatFXP;
extern CPresetFormatFXB gPresetFormatFXB;
extern CPresetFormatFXP* const kPresetFormatFXP;
extern CPresetFormatFXB* const kPresetFormatFXB;
}
