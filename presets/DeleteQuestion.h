// SPDX-License-Identifier: GPL-3.0-or-later
// The question that a browser asks before it deletes a preset.
#pragma once

#include <functional>

namespace Tovra
{
class CFrame;

// [window thread]  Asks whether the file may be deleted, by its base name and perhaps its path, and returns
// at once. done is called once, later: true on yes, false on no and when nobody can be asked.
void askForDelete(const char* path, bool withPath, CFrame* frame, std::function<void(bool)> done);
}
