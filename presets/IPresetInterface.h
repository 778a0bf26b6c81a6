// SPDX-License-Identifier: GPL-3.0-or-later
// A library of presets on disk: the files of one extension in a folder and in its direct subfolders, as a
// sorted list in which one preset may be the current one. What a preset is, the class that derives from this
// knows; the browser is its user interface.
//
// The list is what the last scan found, and indices are places in it. The disk may have changed since: what
// is gone meanwhile loads as nothing. The current preset is remembered by its path, so that it stays the same
// one when other instances save or delete. Failures are silent, but each operation that writes says how it
// ended. Files in subfolders come first, then all go by their names.
#pragma once

#include "presets/PresetResult.h"

#include <string>
#include <vector>

namespace Tovra
{
// [window thread]  All of it. Texts that are answered stay good until the next scan.
class IPresetInterface
{
public:
    struct presetListRecord
    {
        std::string filePath;  // full, with "/" as separators
        std::string name;      // that of the file, without its extension
        std::string groupName; // that of its subfolder
        bool inSubGroup = false;
    };

    IPresetInterface() = default;
    IPresetInterface(const IPresetInterface&) = delete;
    IPresetInterface& operator=(const IPresetInterface&) = delete;
    virtual ~IPresetInterface() = default;

    // Null is ignored; with the empty text there is no folder. Scans at once.
    virtual void setPresetFolder(const char* folder);
    // With "/" as separators and at its end.
    virtual const char* getPresetFolder() const { return presetFolder.c_str(); }
    // Makes the folder if it is missing, and the list anew. The current preset stays the same one.
    virtual void rescanPresets();
    virtual int getNumPresets() const { return int(list.size()); }

    // One step on in the list, round its ends, and loads what is there. Nothing with fewer than 2 presets.
    virtual void setNextPreset();
    virtual void setPrevPreset();
    // An index that is out of the list does nothing, or answers the empty text.
    virtual void loadPresetFromIndex(int index);
    virtual void setCurrentPresetName(const char*) {}

    // -1 if no preset is current, or if the current one is no longer in the list.
    virtual int getCurrentIndex() const;
    virtual void resetIndex() { currentPath.clear(); }
    // By the full path. The extension may be missing, and counts in either case. A path that is not in the
    // list leaves the current preset, or answers -1.
    virtual void setIndexToFile(const char* path);
    virtual int getIndexFromFileName(const char* path) const;

    // The file's new base name; its folder and extension stay. Nothing happens for the empty name, nor if
    // there is another file of that name. The preset becomes the current one.
    virtual PresetResult renamePreset(int index, const char* newName);
    // Without a question; that is up to the caller. No preset is current afterwards.
    virtual PresetResult deletePreset(int index);

    const char* getFileNameFromIndex(int index) const; // the full path
    const char* getPresetName(int index) const;
    virtual bool isPresetInSubGroup(int index) const;
    virtual const char* getSubGroupName(int index) const;

    // ".fxp" and "Preset" at first. Null is ignored.
    virtual void setFileExtension(const char* extension);
    virtual const char* getFileExtension() const { return fileExtension.c_str(); }
    virtual void setPresetTypeName(const char* name);
    virtual const char* getPresetTypeName() const { return presetTypeName.c_str(); }

    // Whether a file belongs into the list.
    virtual bool isValidPreset(const char* path) const = 0;
    virtual void loadPreset(const char* path) = 0;
    virtual PresetResult saveCurrentPreset(const char* path) = 0;

protected:
    // The order of the list. Names that differ in case alone, or not at all, go by their paths.
    static bool listSort(const presetListRecord& a, const presetListRecord& b);
    // For a file that was loaded: it becomes the current preset if it lies in the library, by whatever path
    // it was reached; otherwise none is current.
    void setCurrentToLoaded(const char* path);

private:
    const presetListRecord* recordAt(int index) const;
    int indexOf(const std::string& path) const;
    void scanSubGroup(const std::string& name);
    void _addPresetToList(const std::string& folder, const char* fileName, const std::string& groupName);

    std::string fileExtension = ".fxp";
    std::string presetTypeName = "Preset";
    std::string presetFolder;
    std::string currentPath; // empty for none
    std::vector<presetListRecord> list;
};
}
