// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetFolder.h"

#include "CORE/COSPreferences.h"
#include "CORE/UserFolders.h"

#include <algorithm>

namespace Orbel::Helpers
{
constexpr const char* domain = "TORVANE";
constexpr const char* folderKey = "PresetFolder";

std::string getDefaultPresetFolder(const char* product)
{
    return Core::userDataFolder() + "/Torvane/" + product + "/";
}

std::string getPluginPresetFolder(const char* pluginName, const char* defaultFolder)
{
    const std::string fallback = defaultFolder ? defaultFolder : getDefaultPresetFolder(pluginName);
    return COSPreferences(domain, pluginName).getString(folderKey, fallback.c_str());
}

bool setPluginPresetFolder(const char* pluginName, const char* folder)
{
    return COSPreferences(domain, pluginName).setString(folderKey, folder);
}

std::string asFolder(const char* path)
{
    std::string folder = path ? path : "";
    std::replace(folder.begin(), folder.end(), '\\', '/');
    if (!folder.empty() && folder.back() != '/')
        folder += '/';
    return folder;
}
}
