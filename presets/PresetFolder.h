// SPDX-License-Identifier: GPL-3.0-or-later
// Where a plug-in keeps its presets: the user's choice, shared by all instances in all hosts.
#pragma once

#include <string>

namespace Orbel::Helpers
{
// [window thread] [worker]

// <this user's data folder>/Torvane/<product>/. It need not exist.
std::string getDefaultPresetFolder(const char* product);

// The folder that was chosen for that plug-in. Without a choice the given one, or for null the one that is
// named after the plug-in.
std::string getPluginPresetFolder(const char* pluginName, const char* defaultFolder);

// False if the choice could not be stored.
bool setPluginPresetFolder(const char* pluginName, const char* folder);

// The folder with "/" as separators, and at its end. The empty text stays empty.
std::string asFolder(const char* path);
}
