// SPDX-License-Identifier: GPL-3.0-or-later
// The gallery on the desktop: a click on the title turns the page.
#pragma once

#include <cstddef>

namespace Gallery
{
// [window thread]  Returns when the user has closed the window. False if there is no display.
bool showWindow(std::size_t firstPage, double scale);
}
