// SPDX-License-Identifier: GPL-3.0-or-later
// A window system's panel for opening and saving files. IFrame::createFileSelector makes it, with one
// reference, for one run.
#pragma once

#include "Tovrane/base/CBaseObject.h"

#include <string>
#include <vector>

namespace Tovra
{
struct FileSelectorType
{
    std::string description;
    std::string extension; // without a dot; "*" for all files
};

struct FileSelectorOptions
{
    enum Purpose
    {
        openFile,
        openFiles,
        openFolder,
        saveFile
    };

    Purpose purpose = openFile;
    std::string title;
    std::vector<FileSelectorType> types; // in the order of the panel's list; empty for all files
    std::string startFolder;             // empty for the panel's own choice
    std::string startFile;               // a name without a folder
};

class IFileSelector : public CBaseObject
{
public:
    // [window thread]  Shows the panel and returns when it has closed. The result is paths in UTF-8, or empty
    // if the panel was cancelled, could not be shown, or if the frame was closed meanwhile.
    virtual std::vector<std::string> run(const FileSelectorOptions& options) = 0;
};
}
