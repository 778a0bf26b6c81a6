// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/CFileSelector.h"

#include "Tovrane/base/Kept.h"
#include "Tovrane/views/tree/CFrame.h"

namespace Tovra
{
CFileSelector::CFileSelector(CFrame& over, const std::vector<CTovraneFileType>& types) : frame(over)
{
    for (const CTovraneFileType& type : types)
        options.types.push_back({type.description, type.extension});
    options.types.push_back({"All Files", "*"});
}

void CFileSelector::setStart(const std::string& folder, const std::string& file)
{
    options.startFolder = folder;
    options.startFile = file;
}

void CFileSelector::run(Purpose purpose, Done done)
{
    options.purpose = purpose;
    const auto panel = Kept<IFileSelector>::adopt(frame.createFileSelector());
    if (panel)
        panel->run(options, std::move(done));
    else if (done)
        done({});
}
}
