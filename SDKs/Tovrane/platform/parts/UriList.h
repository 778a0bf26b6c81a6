// SPDX-License-Identifier: GPL-3.0-or-later
// The files of a drag and drop as a list of addresses (text/uri-list), one a line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Tovra
{
// [any thread]  The paths of the local files among the addresses of a text/uri-list, in order, in UTF-8 as
// they stand in the addresses. Other machines' files, other schemes, comments and broken escapes are left
// out.
std::vector<std::string> pathsOfUriList(std::string_view list);

// [any thread]  Whether a text says no more than a list of files does: each of its lines is the path or the
// address of the file in its place. File managers offer this beside the list.
bool restatesFiles(std::string_view text, const std::vector<std::string>& paths);
}
