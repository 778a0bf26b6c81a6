// A font: a regular and a bold face from the font resources, a size, a style, and how its glyphs are drawn.
//
// The faces are read when they are first asked for, so that a plug-in that is only scanned unpacks no fonts;
// fonts that name the same file share it. [window thread]
#pragma once

#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/draw/FontCacheType.h"

#include <string>

namespace Tovra
{
class CFontDesc : public CBaseObject
{
public:
    // The names are those of the files among the resources; they have to stay. A bold name that is null, or
    // equal to the regular one, gives a bold face that is the regular one. Size in pixels to an em.
    CFontDesc(const char* regularName, const char* boldName, double size, FontCacheType cacheType);

    // The regular face's name with a style, the bold one's without: the reverse of getFont. Caches of
    // glyphs go by it.
    const char* getName() const;
    // The TrueType file: the bold face for a style of exactly 1, else the regular one. It stays for good.
    // False, null and 0 if there is none.
    bool getFont(const char*& data, long& length);

    double getSize() const { return size; }
    void setSize(double pixels) { size = pixels; }
    long getStyle() const { return style; }
    void setStyle(long flags) { style = flags; }
    FontCacheType getCacheType() const { return cacheType; }

private:
    struct Face
    {
        const char* name;
        bool loaded = false; // asked for; there may be none
        const std::string* data = nullptr;
    };

    double size;
    long style = 0;
    Face regular;
    Face bold;
    FontCacheType cacheType;
};

// The editor's font in thirds of a pixel, and in grey; both of size 12.
extern CFontDesc gNormalFont;
extern CFontDesc gNormalFont_NoLCD;
extern CFontDesc* const kNormalFont; // gNormalFont
}
