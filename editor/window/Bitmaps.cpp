// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/window/Bitmaps.h"

#include "resources/ArtResources.h"

static Bitmaps loadBitmaps()
{
    const auto named = [](const char* name)
    { return Tovra::Kept<Tovra::CBitmap>::adopt(new Tovra::CBitmap(name, false)); };
    const Orbel::ResourceBlock art = artResources();
    SetResourcePtr(art.data, long(art.size));
    Bitmaps loaded = {named("Background.png"),    named("MemoryButton.png"), named("ArrowLeftBig.png"),
                      named("ArrowRightBig.png"), named("ArrowDownBig.png"), named("Zahnrad.png"),
                      named("ToggleDisplay.png")};
    FreeResources();
    return loaded;
}

const Bitmaps& bitmaps()
{
    static const Bitmaps all = loadBitmaps();
    return all;
}
