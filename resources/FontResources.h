// SPDX-License-Identifier: GPL-3.0-or-later
// The fonts of the editor's window: "arial.ttf", the regular face, and "arialbd.ttf", the bold one. They have
// the names that the layout asks for, and the same widths as the fonts of these names.
#pragma once

#include "Orbel/storage/ResourceStore.h"

// [any thread]
Orbel::ResourceBlock fontResources();
