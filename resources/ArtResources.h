// SPDX-License-Identifier: GPL-3.0-or-later
// The pictures of the product's window, drawn from resources/art while the project is built: "Background.png"
// and its like at one pixel to a unit, and "Background.png@2x", "Background.png@3x" beside each.
#pragma once

#include "Orbel/storage/ResourceStore.h"

// [any thread]
Orbel::ResourceBlock artResources();
