// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/IPresetInterface.h"

#include "CORE/CFileIterator.h"
#include "CORE/File.h"
#include "Sonvex/FileNames.h"
#include "presets/PresetFolder.h"
#include "presets/PresetNames.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <unistd.h>

namespace Tovra
{
namespace
{
constexpr int entryNameSize = CFileIterator::kLongestName + 2;

PresetResult resultOf(const Core::FileResult& done)
{
    return {done.problem, done ? 1 : 0};
}

PresetResult noSuchPreset()
{
    return {"there is no such preset", 0};
}

// The path of a file of the library as a scan would find it, however it was reached; empty if the file lies
// elsewhere.
std::string pathInLibrary(const std::string& path, const std::string& library)
{
    namespace fs = std::filesystem;
    constexpr auto deepest = 2; // a group and a file
    std::error_code error;
    const fs::path place =
        fs::weakly_canonical(path, error).lexically_relative(fs::weakly_canonical(library, error));
    const bool isInside = !library.empty() && !place.empty() && *place.begin() != ".." && place != "." &&
                          std::distance(place.begin(), place.end()) <= deepest;
    return isInside ? library + place.string() : "";
}

std::string withoutExtension(const std::string& path)
{
    return path.substr(0, path.rfind('.'));
}

bool endsWithInEitherCase(std::string_view path, std::string_view extension)
{
    return path.size() >= extension.size() &&
           compareUpperCase(path.substr(path.size() - extension.size()), extension) == 0;
}
}

void IPresetInterface::setPresetFolder(const char* folder)
{
    if (!folder)
        return;
    presetFolder = Orbel::Helpers::asFolder(folder);
    rescanPresets();
}

void IPresetInterface::rescanPresets()
{
    list.clear();
    if (presetFolder.empty())
        return;
    Core::File::mkDirRecursive(presetFolder.c_str());
    CFileIterator entries(presetFolder.c_str());
    for (char name[entryNameSize]; entries.findNext(name);)
    {
        if (*name == '/')
            scanSubGroup(name + 1);
        else
            _addPresetToList(presetFolder, name, "");
    }
    std::sort(list.begin(), list.end(), listSort);
}

void IPresetInterface::scanSubGroup(const std::string& name)
{
    const std::string folder = presetFolder + name + "/";
    CFileIterator entries(folder.c_str());
    for (char file[entryNameSize]; entries.findNext(file);)
        if (*file != '/')
            _addPresetToList(folder, file, name);
}

void IPresetInterface::_addPresetToList(const std::string& folder, const char* fileName,
                                        const std::string& groupName)
{
    const std::string path = folder + fileName;
    if (isValidPreset(path.c_str()))
        list.push_back({path, baseNameOf(fileName), groupName, !groupName.empty()});
}

bool IPresetInterface::listSort(const presetListRecord& a, const presetListRecord& b)
{
    if (a.inSubGroup != b.inSubGroup)
        return a.inSubGroup;
    const int order = compareUpperCase(a.name, b.name);
    return order != 0 ? order < 0 : a.filePath < b.filePath;
}

const IPresetInterface::presetListRecord* IPresetInterface::recordAt(int index) const
{
    return index >= 0 && index < getNumPresets() ? &list[size_t(index)] : nullptr;
}

void IPresetInterface::setNextPreset()
{
    const int count = getNumPresets();
    if (count >= 2)
        loadPresetFromIndex((getCurrentIndex() + 1) % count);
}

void IPresetInterface::setPrevPreset()
{
    const int count = getNumPresets(), current = getCurrentIndex();
    if (count >= 2)
        loadPresetFromIndex(current > 0 ? current - 1 : count - 1);
}

void IPresetInterface::loadPresetFromIndex(int index)
{
    const presetListRecord* found = recordAt(index);
    if (!found)
        return;
    const presetListRecord record = *found; // a copy: what follows may scan
    currentPath = record.filePath;
    loadPreset(record.filePath.c_str());
    setCurrentPresetName(record.name.c_str());
}

int IPresetInterface::indexOf(const std::string& path) const
{
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](const presetListRecord& record) { return record.filePath == path; });
    return found == list.end() ? -1 : int(found - list.begin());
}

int IPresetInterface::getCurrentIndex() const
{
    return currentPath.empty() ? -1 : indexOf(currentPath);
}

void IPresetInterface::setIndexToFile(const char* path)
{
    if (const presetListRecord* record = recordAt(getIndexFromFileName(path)))
        currentPath = record->filePath;
}

int IPresetInterface::getIndexFromFileName(const char* path) const
{
    const std::string wanted = path ? path : "";
    const bool hasExtension = endsWithInEitherCase(wanted, fileExtension);
    const int exact = indexOf(hasExtension ? wanted : wanted + fileExtension);
    if (exact >= 0)
        return exact;
    const std::string stem = hasExtension ? withoutExtension(wanted) : wanted;
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](const presetListRecord& record)
                                    { return withoutExtension(record.filePath) == stem; });
    return found == list.end() ? -1 : int(found - list.begin());
}

void IPresetInterface::setCurrentToLoaded(const char* path)
{
    currentPath = indexOf(path) >= 0 ? path : pathInLibrary(path, presetFolder);
}

PresetResult IPresetInterface::renamePreset(int index, const char* newName)
{
    const presetListRecord* record = recordAt(index);
    if (!record)
        return noSuchPreset();
    if (!newName || !*newName)
        return {"a preset needs a name", 0};
    const std::string from = record->filePath;
    const std::string to =
        from.substr(0, from.rfind('/') + 1) + fileNameFor(newName, getFileExt(from.c_str()));
    PresetResult result =
        resultOf(to == from ? Core::FileResult() : Core::File::renameToFreeName(from.c_str(), to.c_str()));
    if (!result)
        return result;
    rescanPresets();
    setIndexToFile(to.c_str());
    return result;
}

PresetResult IPresetInterface::deletePreset(int index)
{
    const presetListRecord* record = recordAt(index);
    if (!record)
        return noSuchPreset();
    const bool isGone = unlink(record->filePath.c_str()) == 0 || errno == ENOENT;
    PresetResult result = resultOf(isGone ? Core::FileResult() : Core::FileResult::failed(errno));
    if (!result)
        return result;
    resetIndex();
    rescanPresets();
    return result;
}

const char* IPresetInterface::getFileNameFromIndex(int index) const
{
    const presetListRecord* record = recordAt(index);
    return record ? record->filePath.c_str() : "";
}

const char* IPresetInterface::getPresetName(int index) const
{
    const presetListRecord* record = recordAt(index);
    return record ? record->name.c_str() : "";
}

bool IPresetInterface::isPresetInSubGroup(int index) const
{
    const presetListRecord* record = recordAt(index);
    return record && record->inSubGroup;
}

const char* IPresetInterface::getSubGroupName(int index) const
{
    const presetListRecord* record = recordAt(index);
    return record ? record->groupName.c_str() : "";
}

void IPresetInterface::setFileExtension(const char* extension)
{
    if (extension)
        fileExtension = extension;
}

void IPresetInterface::setPresetTypeName(const char* name)
{
    if (name)
        presetTypeName = name;
}
}
