// SPDX-License-Identifier: GPL-3.0-or-later
// The gallery on the desktop: a click on the title turns the page, a right click on empty ground offers the
// window's size.
#pragma once

#include <cstddef>

namespace Gallery
{
// [window thread]  Returns when the user has closed the window. False if there is no display. The scale is
// the desktop's if fixedScale is 0.
bool showWindow(std::size_t firstPage, double fixedScale);
}
