// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/FileDialogCommand.h"

#include "Tovrane/platform/parts/EditLine.h"

#include <algorithm>

namespace Tovra
{
namespace
{
// A path never holds two slashes in a row, so nothing in a file's name can look like this.
constexpr char zenitySeparator[] = "//";

// Without what would end it, or begin another part of it, in a filter.
std::string forFilter(const std::string& text)
{
    std::string result = onOneLine(text);
    result.erase(std::remove(result.begin(), result.end(), '|'), result.end());
    return result;
}

std::string pattern(const FileSelectorType& type)
{
    return type.extension == "*" || type.extension.empty() ? "*" : "*." + forFilter(type.extension);
}

std::string startPath(const FileSelectorOptions& options, const std::string& home)
{
    std::string path = options.startFolder.empty() ? home : options.startFolder;
    if (path.empty() || path[0] != '/')
        path = "/" + path; // never an option
    if (path.back() != '/')
        path += '/';
    const std::size_t name = options.startFile.rfind('/');
    return path + (name == std::string::npos ? options.startFile : options.startFile.substr(name + 1));
}

std::vector<std::string> zenityCommand(const FileSelectorOptions& options, const std::string& start)
{
    std::vector<std::string> words = {"zenity", "--file-selection", "--title=" + onOneLine(options.title),
                                      "--filename=" + start};
    if (options.purpose == FileSelectorOptions::openFiles)
    {
        words.push_back("--multiple");
        words.push_back(std::string("--separator=") + zenitySeparator);
    }
    if (options.purpose == FileSelectorOptions::openFolder)
        words.push_back("--directory");
    if (options.purpose == FileSelectorOptions::saveFile)
        words.push_back("--save");
    for (const FileSelectorType& type : options.types)
        words.push_back("--file-filter=" + forFilter(type.description) + " | " + pattern(type));
    return words;
}

std::vector<std::string> kdialogCommand(const FileSelectorOptions& options, std::uint32_t window,
                                        const std::string& start)
{
    std::vector<std::string> words = {"kdialog", "--title", onOneLine(options.title)};
    if (window != 0)
        words.insert(words.end(), {"--attach", std::to_string(window)});
    switch (options.purpose)
    {
    case FileSelectorOptions::openFolder:
        words.insert(words.end(), {"--getexistingdirectory", start});
        return words;
    case FileSelectorOptions::openFiles:
        words.insert(words.end(), {"--multiple", "--separate-output", "--getopenfilename", start});
        break;
    case FileSelectorOptions::openFile:
        words.insert(words.end(), {"--getopenfilename", start});
        break;
    case FileSelectorOptions::saveFile:
        words.insert(words.end(), {"--getsavefilename", start});
        break;
    }
    std::string filter;
    for (const FileSelectorType& type : options.types)
        filter += (filter.empty() ? "" : "\n") + pattern(type) + "|" + forFilter(type.description);
    if (!filter.empty())
        words.push_back(filter);
    return words;
}
}

std::vector<FileDialogProgram> fileDialogPrograms(const std::string& desktop)
{
    if (desktop.find("KDE") != std::string::npos)
        return {FileDialogProgram::kdialog, FileDialogProgram::zenity};
    return {FileDialogProgram::zenity, FileDialogProgram::kdialog};
}

std::vector<std::string> fileDialogCommand(FileDialogProgram program, const FileSelectorOptions& options,
                                           std::uint32_t window, const std::string& home)
{
    const std::string start = startPath(options, home);
    return program == FileDialogProgram::zenity ? zenityCommand(options, start)
                                                : kdialogCommand(options, window, start);
}

std::vector<std::string> fileDialogAnswer(FileDialogProgram program, const std::string& output)
{
    const std::string separator = program == FileDialogProgram::zenity ? zenitySeparator : "\n";
    std::string rest = output;
    if (!rest.empty() && rest.back() == '\n')
        rest.pop_back();
    std::vector<std::string> paths;
    while (!rest.empty())
    {
        std::size_t end = std::min(rest.find(separator), rest.size());
        const bool isZenity = program == FileDialogProgram::zenity;
        while (isZenity && end < rest.size() && rest.compare(end + 1, 3, "///") == 0)
            ++end; // the path itself ends with a slash
        if (rest[0] == '/')
            paths.push_back(rest.substr(0, end));
        rest.erase(0, std::min(end + separator.size(), rest.size()));
    }
    return paths;
}
}
