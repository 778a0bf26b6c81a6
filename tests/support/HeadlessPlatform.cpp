// SPDX-License-Identifier: GPL-3.0-or-later
// Linked into every test program that makes frames: those without a window are headless.
#include "Tovrane/platform/headless/HeadlessFrame.h"

static const bool registered = (Tovra::useHeadlessFrames(), true);
