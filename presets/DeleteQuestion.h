// SPDX-License-Identifier: GPL-3.0-or-later
// The question that a browser asks before it deletes a preset.
#pragma once

namespace Tovra
{
class CFrame;

// [window thread]  Asks whether the file may be deleted, by its base name and perhaps its path; true on yes.
bool askForDelete(const char* path, bool withPath, CFrame* frame);
}
