// SPDX-License-Identifier: GPL-3.0-or-later
// The mouse cursors that views ask for. Any other number stands for the arrow.
#pragma once

namespace Tovra
{
enum CCursorType : int
{
    kCursorDefault = 0,
    kCursorHSize = 2, // left and right
    kCursorVSize = 3, // up and down
    kCursorCrosshair = 4,
    kCursorNotAllowed = 8,
    kCursorHand = 9 // open
};
}
