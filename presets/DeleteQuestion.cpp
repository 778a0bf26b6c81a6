// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/DeleteQuestion.h"

#include "Sonvex/MessageBox.h"
#include "presets/PresetNames.h"

namespace Tovra
{
void askForDelete(const char* path, bool withPath, CFrame* frame, std::function<void(bool)> done)
{
    const std::string name = baseNameOf(path);
    const std::string body =
        withPath ? Sonvex::formatMessage("Do you really want to delete \"%s\" ?\n(%s)", name.c_str(), path)
                 : Sonvex::formatMessage("Do you really want to delete \"%s\" ?", name.c_str());
    Sonvex::openMessageBox(frame, Sonvex::kMessageBoxYesNo, "Delete Preset", body,
                           [done = std::move(done)](int answer) { done(answer != 0); });
}
}
