// SPDX-License-Identifier: GPL-3.0-or-later
// A font: a regular and a bold face from the font resources, a size, a style, and the way its glyphs are
// drawn.
//
// A face is read when it is first used, so that scanning the plug-in does not unpack the fonts. Fonts share
// faces of the same name. [window thread]
#pragma once

#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/draw/FontCacheType.h"

#include <string>

namespace Tovra
{
class CFontDesc : public CBaseObject
{
public:
    // Names of font resources; they have to outlive the font. A bold name that is null, or equal to the
    // regular name, makes the bold face the same as the regular one. size is in pixels to an em.
    CFontDesc(const char* regularName, const char* boldName, double size, FontCacheType cacheType);

    // The name under which the font engine caches the face: the regular one's for any style but 0, the bold
    // one's for 0, which is the reverse of getFont.
    const char* getName() const;
    // The bytes of the TrueType file: of the bold face for a style of exactly 1, otherwise of the regular
    // one. They stay valid for good. False, null and 0 if there is no such resource.
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
        bool loaded = false; // looked for, whether or not it was found
        const std::string* data = nullptr;
    };

    double size;
    long style = 0;
    Face regular;
    Face bold;
    FontCacheType cacheType;
};

// The editor's font, with sub-pixels and in grey; both of size 12.
extern CFontDesc gNormalFont;
extern CFontDesc gNormalFont_NoLCD;
extern CFontDesc* const kNormalFont; // gNormalFont
}
