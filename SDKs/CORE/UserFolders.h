// SPDX-License-Identifier: GPL-3.0-or-later
// This user's folders, by the desktop's conventions. The environment is read at every call.
#pragma once

#include <string>

namespace Core
{
// Full paths without a separator at their end; the folders need not exist.

// $HOME, or what the password file says.
std::string homeFolder();
// $LODEX_DATA_HOME, else $XDG_DATA_HOME, else ~/.local/share.
std::string userDataFolder();
// $LODEX_CONFIG_HOME, else $XDG_CONFIG_HOME, else ~/.config.
std::string userConfigFolder();
}
