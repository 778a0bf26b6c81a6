#include "presets/IPresetInterface.h"

#include "CORE/CFileIterator.h"
#include "CORE/File.h"
#include "Sonvex/FileNames.h"
#include "Sonvex/MessageBox.h"
#include "presets/PresetFolder.h"
#include "presets/PresetNames.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Tovra
{
namespace
{
constexpr int entryNameSize = CFileIterator::kLongestName + 2;

// Where the file system cannot refuse by itself to overwrite, the look before leaves a moment.
bool renameToFreeName(const std::string& from, const std::string& to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    struct stat info;
    const bool isUnknown = errno == EINVAL || errno == ENOSYS;
    return isUnknown && lstat(to.c_str(), &info) != 0 && std::rename(from.c_str(), to.c_str()) == 0;
}
}

bool askForDelete(const char* path, bool withPath, CFrame* frame)
{
    constexpr const char* title = "Delete Preset";
    const std::string name = baseNameOf(path);
    const auto type = Sonvex::kMessageBoxYesNo;
    if (withPath)
        return Sonvex::MessageBoxModal(frame, type, title, "Do you really want to delete \"%s\" ?\n(%s)",
                                       name.c_str(), path) != 0;
    return Sonvex::MessageBoxModal(frame, type, title, "Do you really want to delete \"%s\" ?",
                                   name.c_str()) != 0;
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
        loadPresetFromIndex((currentIndex + 1) % count);
}

void IPresetInterface::setPrevPreset()
{
    const int count = getNumPresets();
    if (count >= 2)
        loadPresetFromIndex(currentIndex > 0 ? (currentIndex - 1) % count : count - 1);
}

void IPresetInterface::loadPresetFromIndex(int index)
{
    const presetListRecord* found = recordAt(index);
    if (!found)
        return;
    const presetListRecord record = *found; // what follows may scan
    currentIndex = index;
    loadPreset(record.filePath.c_str());
    setCurrentPresetName(record.name.c_str());
}

int IPresetInterface::indexOf(const std::string& path) const
{
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](const presetListRecord& record) { return record.filePath == path; });
    return found == list.end() ? -1 : int(found - list.begin());
}

void IPresetInterface::makeCurrent(int index)
{
    if (index >= 0)
        currentIndex = index;
}

void IPresetInterface::setIndexToFile(const char* path)
{
    makeCurrent(getIndexFromFileName(path));
}

int IPresetInterface::getIndexFromFileName(const char* path) const
{
    const std::string wanted = path ? path : "";
    return indexOf(checkFileExtention(path, getFileExtension()) ? wanted : wanted + getFileExtension());
}

void IPresetInterface::renamePreset(int index, const char* newName)
{
    const presetListRecord* record = recordAt(index);
    if (!record || !newName || !*newName)
        return;
    const std::string from = record->filePath;
    const std::string to =
        from.substr(0, from.rfind('/') + 1) + fileNameFor(newName, getFileExt(from.c_str()));
    if (to != from && !renameToFreeName(from, to))
        return;
    rescanPresets();
    makeCurrent(indexOf(to));
}

void IPresetInterface::deletePreset(int index)
{
    const presetListRecord* record = recordAt(index);
    if (!record)
        return;
    const std::string path = record->filePath;
    if (!askForDelete(path.c_str(), true, frame) || (unlink(path.c_str()) != 0 && errno != ENOENT))
        return;
    rescanPresets();
    currentIndex = list.empty() ? -1 : std::max(currentIndex - 1, 0);
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
