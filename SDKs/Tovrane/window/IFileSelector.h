// SPDX-License-Identifier: GPL-3.0-or-later
// A window system's panel for opening and saving files. IFrame::createFileSelector makes it, with one
// reference, for one run.
#pragma once

#include "Tovrane/base/CBaseObject.h"

#include <functional>
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
    using Done = std::function<void(std::vector<std::string> paths)>;

    // [window thread]  Opens the panel and returns at once; the host's event loop goes on, and the frame
    // takes no clicks and keys meanwhile. done is called exactly once, later: with the paths in UTF-8, or
    // with none if the user cancelled or no panel could be shown. When the frame closes first, done is called
    // before it is closed. If there can be no panel (the frame is closed, it has another panel open), done is
    // called within this call. This object lives until then, so the caller may forget it at once; done keeps
    // alive what it uses.
    virtual void run(const FileSelectorOptions& options, Done done) = 0;
    // [window thread]  Closes the panel as if the user had cancelled. Does nothing if it is not open.
    virtual void cancel() = 0;
};
}
