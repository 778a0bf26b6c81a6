// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/UserFolders.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace Core
{
namespace
{
// The variable's value if it is a full path (the desktop's rule is to ignore any other), else empty.
std::string fullPathFrom(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value && value[0] == '/' ? value : "";
}

std::string homeFromPasswordFile()
{
    char buffer[4096];
    passwd entry;
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer, sizeof buffer, &found) == 0 && found && found->pw_dir)
        return found->pw_dir;
    return "";
}

std::string userFolder(const char* own, const char* desktop, const char* belowHome)
{
    for (const char* variable : {own, desktop})
        if (auto folder = fullPathFrom(variable); !folder.empty())
            return folder;
    return homeFolder() + belowHome;
}
}

std::string homeFolder()
{
    auto folder = fullPathFrom("HOME");
    return folder.empty() ? homeFromPasswordFile() : folder;
}

std::string userDataFolder()
{
    return userFolder("LODEX_DATA_HOME", "XDG_DATA_HOME", "/.local/share");
}

std::string userConfigFolder()
{
    return userFolder("LODEX_CONFIG_HOME", "XDG_CONFIG_HOME", "/.config");
}
}
