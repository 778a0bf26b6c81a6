// SPDX-License-Identifier: GPL-3.0-or-later
// The effect's own resources: "defaultBank", the image of an .fxb file with the factory bank, and
// "initPreset", that of an .fxp file with the start state.
#pragma once

#include "Orbel/storage/ResourceStore.h"

// [any thread]
Orbel::ResourceBlock effectResources();
