// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/UriList.h"

#include <optional>
#include <unistd.h>

namespace Tovra
{
namespace
{
std::vector<std::string_view> linesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty())
    {
        const std::size_t end = std::min(text.find_first_of(std::string_view("\r\n\0", 3)), text.size());
        if (end > 0)
            lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = char(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// Nothing for an escape that is none, or one that stands for the end of a text.
std::optional<std::string> unescaped(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] != '%')
        {
            result += text[i];
            continue;
        }
        const int high = i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
        const int low = i + 2 < text.size() ? hexDigit(text[i + 2]) : -1;
        if (high < 0 || low < 0 || (high == 0 && low == 0))
            return std::nullopt;
        result += char(high * 16 + low);
        i += 2;
    }
    return result;
}

bool isThisMachine(std::string_view host)
{
    char name[256] = "";
    gethostname(name, sizeof name - 1);
    return host.empty() || host == "localhost" || host == name;
}

// "file:///path", "file://host/path" or "file:/path".
std::optional<std::string> pathOf(std::string_view address)
{
    constexpr std::string_view scheme = "file:";
    if (!address.starts_with(scheme))
        return std::nullopt;
    address.remove_prefix(scheme.size());
    if (address.starts_with("//"))
    {
        address.remove_prefix(2);
        const std::size_t slash = std::min(address.find('/'), address.size());
        if (!isThisMachine(address.substr(0, slash)))
            return std::nullopt;
        address.remove_prefix(slash);
    }
    return address.starts_with('/') ? unescaped(address) : std::nullopt;
}
}

std::vector<std::string> pathsOfUriList(std::string_view list)
{
    std::vector<std::string> paths;
    for (const std::string_view line : linesOf(list))
        if (auto path = pathOf(line))
            paths.push_back(std::move(*path));
    return paths;
}

bool restatesFiles(std::string_view text, const std::vector<std::string>& paths)
{
    const auto lines = linesOf(text);
    if (lines.size() != paths.size())
        return false;
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (lines[i] != paths[i] && pathOf(lines[i]) != paths[i])
            return false;
    return true;
}
}
