// SPDX-License-Identifier: GPL-3.0-or-later
// "lodex render": ducks an audio file.
#pragma once

#include "tools/render/RenderOptions.h"

namespace lodex
{
// Adds the command; it runs when the command line that app parses asks for it.
void addRenderCommand(CLI::App& app);

// Writes the files that options ask for. If it throws a ToolError, none of them has been written.
void render(const RenderOptions& options);
}
