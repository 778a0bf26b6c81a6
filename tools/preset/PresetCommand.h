// SPDX-License-Identifier: GPL-3.0-or-later
// "lodex preset": what a preset, a bank, a host's state or an older form holds, the same as current preset
// files, and whether it is damaged.
#pragma once

namespace CLI
{
class App;
}

namespace lodex
{
void addPresetCommand(CLI::App& app);
}
