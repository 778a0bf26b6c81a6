// The fonts of the editor's window: "arial.ttf", the regular face, and "arialbd.ttf", the bold one. They go
// by the names that the layout asks for, and have those fonts' widths.
#pragma once

#include "Orbel/storage/ResourceStore.h"

// [any thread]
Orbel::ResourceBlock fontResources();
