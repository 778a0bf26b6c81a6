// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/COSPreferences.h"

#include "CORE/CString.h"
#include "CORE/File.h"
#include "CORE/UserFolders.h"
#include "CORE/Utf8.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <string_view>
#include <sys/file.h>
#include <unistd.h>

namespace
{
constexpr size_t largestFile = 1 << 20; // bytes; a store of a few settings never gets that large
constexpr size_t longestFileName = 200; // bytes; leaves room for the ending in what file systems take
constexpr int callersBuffer = 256;      // bytes
constexpr char escapes[][2] = {{'\n', 'n'}, {'\r', 'r'}, {'\\', '\\'}, {'=', 'e'}};

std::string fileNameFrom(const char* text)
{
    std::string name(Core::Utf8::cut(text ? text : "", longestFileName));
    for (char& c : name)
        if (c == '/' || (unsigned char)c < 0x20 || c == 0x7f)
            c = '_';
    for (size_t i = 0; i < name.size() && name[i] == '.'; ++i)
        name[i] = '_';
    return name.empty() ? "_" : name;
}

// The counterpart of the character, looked up in one column of the escapes; 0 if it is not in the table.
char counterpart(char c, int column)
{
    for (const auto& escape : escapes)
        if (escape[column] == c)
            return escape[1 - column];
    return 0;
}

// The text in one line. In a key "=" is escaped, too: the first one in a line ends its key.
std::string escaped(const char* text, bool isKey)
{
    std::string line;
    for (; text && *text; ++text)
    {
        const char letter = *text == '=' && !isKey ? char(0) : counterpart(*text, 0);
        if (letter)
            line.append({'\\', letter});
        else
            line += *text;
    }
    return line;
}

std::string unescaped(std::string_view line)
{
    std::string text;
    for (size_t i = 0; i < line.size(); ++i)
    {
        const bool isEscape = line[i] == '\\' && i + 1 < line.size();
        const char meant = isEscape ? counterpart(line[i + 1], 1) : char(0);
        text += meant ? meant : line[i];
        i += meant ? 1 : 0;
    }
    return text;
}

// The whole file; empty if there is none, nothing if there is one that cannot be read. It is opened once, so
// that a store that is replaced meanwhile is seen as it was or as it is, not as a mixture.
std::optional<std::string> contentOf(const std::string& path)
{
    std::string content;
    if (Core::File::readFile(path.c_str(), largestFile, content))
        return content;
    return Core::File::getFileSize(path.c_str()) < 0 ? std::optional<std::string>("") : std::nullopt;
}

// The store's text, cut into lines: each call takes the next one, without its line feed.
std::string_view takeLine(std::string_view& rest)
{
    const auto line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    return line;
}

bool isLineOf(std::string_view line, std::string_view escapedKey)
{
    return line.substr(0, line.find('=')) == escapedKey && line.size() > escapedKey.size();
}

std::string withValue(std::string_view content, const std::string& escapedKey, const char* value)
{
    std::string result;
    while (!content.empty())
        if (const auto line = takeLine(content); !isLineOf(line, escapedKey))
            result.append(line).append("\n");
    return result + escapedKey + "=" + escaped(value, false) + "\n";
}

// One writer at a time, over all processes, while the object lives. The lock is the folder's own, so there
// is no lock file to leave behind; where a file system has no locks, writing goes on without one.
class FolderLock
{
public:
    explicit FolderLock(const std::string& folder)
        : descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        while (descriptor >= 0 && flock(descriptor, LOCK_EX) != 0 && errno == EINTR)
        {
        }
    }
    ~FolderLock()
    {
        if (descriptor >= 0)
            close(descriptor);
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    int descriptor;
};
}

COSPreferences::COSPreferences(const char* domainText, const char* nameText)
    : domain(fileNameFrom(domainText)), name(fileNameFrom(nameText))
{
}

std::string COSPreferences::folder() const
{
    return Core::userConfigFolder() + "/" + domain;
}

std::string COSPreferences::file() const
{
    return folder() + "/" + name + ".conf";
}

void COSPreferences::getString(const char* key, char* out, const char* fallback) const
{
    Core::CString(out, callersBuffer).set(getString(key, fallback).c_str());
}

std::string COSPreferences::getString(const char* key, const char* fallback) const
{
    const auto content = contentOf(file()).value_or("");
    const auto escapedKey = escaped(key, true);
    for (std::string_view rest = content; !rest.empty();)
        if (const auto line = takeLine(rest); isLineOf(line, escapedKey))
            return unescaped(line.substr(escapedKey.size() + 1));
    return fallback ? fallback : "";
}

bool COSPreferences::setString(const char* key, const char* value)
{
    if (!Core::File::mkDirRecursive(folder().c_str()))
        return false;
    const FolderLock lock(folder());
    const auto content = contentOf(file());
    if (!content)
        return false;
    const auto changed = withValue(*content, escaped(key, true), value);
    return bool(Core::File::replaceFile(file().c_str(), changed.data(), changed.size()));
}
