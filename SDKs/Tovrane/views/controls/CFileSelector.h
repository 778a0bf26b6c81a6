// SPDX-License-Identifier: GPL-3.0-or-later
// Asks the user for files or a folder, in the desktop's own panel over a frame. [window thread]
#pragma once

#include "Tovrane/window/IFileSelector.h"

#include <functional>
#include <string>
#include <vector>

namespace Tovra
{
class CFrame;

// A kind of files: "Lodex Bank", "fxb".
struct CTovraneFileType
{
    std::string description;
    std::string extension; // without a dot
};

class CFileSelector
{
public:
    using Purpose = FileSelectorOptions::Purpose;
    using Done = std::function<void(std::vector<std::string> paths)>;

    // The frame has to be there when run is called. "All Files" is added after the types.
    CFileSelector(CFrame& frame, const std::vector<CTovraneFileType>& types);

    void setTitle(const std::string& title) { options.title = title; }
    void setStart(const std::string& folder, const std::string& file = {});
    // Opens the panel and returns. done is called once, with no paths if nothing was chosen; this object may
    // have gone by then.
    void run(Purpose purpose, Done done);

private:
    CFrame& frame;
    FileSelectorOptions options;
};
}
