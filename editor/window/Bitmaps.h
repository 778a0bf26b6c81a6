// SPDX-License-Identifier: GPL-3.0-or-later
// The pictures of the window, loaded once for all instances. [window thread]
#pragma once

#include "Tovrane/base/Kept.h"
#include "Tovrane/draw/CBitmap.h"

struct Bitmaps
{
    Tovra::Kept<Tovra::CBitmap> BackBitmap;   // the ground of the window
    Tovra::Kept<Tovra::CBitmap> memBtnBitmap; // lit, and below it at rest
    Tovra::Kept<Tovra::CBitmap> aLeftBmp;     // arrows
    Tovra::Kept<Tovra::CBitmap> aRightBmp;
    Tovra::Kept<Tovra::CBitmap> aDownBmp;
    Tovra::Kept<Tovra::CBitmap> button_syspage; // off, and below it on
    Tovra::Kept<Tovra::CBitmap> toggle_display; // the ground of the panel
};

// What is missing is an empty picture.
const Bitmaps& bitmaps();
