// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/DeleteQuestion.h"

#include "Sonvex/MessageBox.h"
#include "presets/PresetNames.h"

namespace Tovra
{
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
}
