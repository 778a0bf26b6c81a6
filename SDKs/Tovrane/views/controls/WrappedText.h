// SPDX-License-Identifier: GPL-3.0-or-later
// A text in lines that fit a width.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace Tovra
{
using TextMeasure = std::function<double(const std::string&)>; // the width of a line

// [any thread but audio]  A line break begins a new line, a line that is too long is broken at a space, and a
// word that is longer than a line between two characters; a line has at least one character. Other control
// characters become spaces, and bytes that are no UTF-8 replacement characters. The result has no empty line
// at its end.
std::vector<std::string> wrapText(const std::string& text, double width, const TextMeasure& measure);

// [any thread but audio]  The text on one line: if it is too wide, its beginning and an ellipsis.
std::string shortenText(const std::string& text, double width, const TextMeasure& measure);
}
