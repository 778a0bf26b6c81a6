// SPDX-License-Identifier: GPL-3.0-or-later
// A picture: a PNG that is decoded once into premultiplied pixels, which the renderer blends from then on.
//
// Premultiplying shifts by 8 instead of dividing by 255, so that white becomes 254: this is part of the look
// of every picture. A PNG with an error in it is shown as far as it could be decoded. One of more than 8192
// pixels a side, or 64 MiB in all, is refused and gives an empty picture.
//
// One pixel of it is one unit of what draws it. Where that is drawn at a larger scale, a rendition of the
// picture is used that was made for it: the file or resource of the same name with "@2x" or "@3x" appended.
// Between those scales, or without renditions, the next larger one is resampled.
//
// Shared by reference count. [window thread]
#pragma once

#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/base/CPoint.h"
#include "Tovrane/base/CRect.h"
#include "Tovrane/draw/BitmapRenditions.h"
#include "Tovrane/draw/PelmoAGG.h"

#include <memory>

struct png_info_def;
struct png_struct_def;

namespace Tovra
{
class CDrawContext;
class IOSBitmap;
class ITovraPNGStream;
struct CResourceDescription;

class CBitmap : public CBaseObject
{
public:
    // Loads the file of that name, or the resource from the block that is bound to this thread. What cannot
    // be opened gives a picture of 0 x 0, which draws nothing.
    CBitmap(const char* name, bool fromFile);
    ~CBitmap() override;
    CBitmap(const CBitmap&) = delete;
    CBitmap& operator=(const CBitmap&) = delete;

    // Draws the part of the picture that begins at offset and is as large as rect, to the top left of rect.
    // The last row and column of the context's clip are left out.
    virtual void draw(CDrawContext* context, const CRect& rect, const CPoint& offset);
    // Like draw.
    virtual void drawTransparent(CDrawContext* context, const CRect& rect, const CPoint& offset);
    // Like draw, with an alpha from 0 to 255, and on whole pixels whatever the offset of the context is.
    virtual void drawAlphaBlend(CDrawContext* context, const CRect& rect, const CPoint& offset,
                                unsigned char alpha);
    // Scales the source part, truncated to whole pixels, to the target.
    virtual void drawScaled(CDrawContext* context, const CRect& source, const CRect& target);

    // Replaces the picture. False if the file could not be opened.
    virtual bool loadFromPath(const void* path);
    // Empties the picture, and keeps its memory for the next one.
    virtual void dispose();
    // Called within loadFromStream; libpng's error handler jumps out of it.
    virtual void loadPNGFromStruct(png_struct_def* png, png_info_def* info);
    virtual bool loadFromResource(const CResourceDescription& description);
    virtual bool loadFromNewResource(const char* name);
    // False only for null. The caller keeps the stream.
    virtual bool loadFromStream(ITovraPNGStream* stream);
    // For renditions: like loadFromStream, for a picture with that many pixels to a unit.
    void loadScaled(ITovraPNGStream& stream, int pixelsPerUnit);

    // Sets the pixels to draw from and into. The caller keeps ownership. Null for no pixels.
    void attachImg(IOSBitmap* bitmap);

    // In pixels of the picture for scale 1.
    double getWidth() const { return width; }
    double getHeight() const { return height; }
    bool isLoaded() const { return loaded; }
    IOSBitmap* getOSBitmap() const { return memory.get(); }
    const PelmoAGG::Image& getImage() const { return image; }
    // Draws into this picture.
    CDrawContext* getDrawContext() const { return context; }

private:
    void load(ITovraPNGStream& stream);
    void decode(ITovraPNGStream& stream);
    void premultiply();
    // The renderer of the target; null if there is nothing to draw.
    PelmoAGG* drawable(CDrawContext* target) const;
    // The part of size extent from offset on; all in units.
    void blend(PelmoAGG& onto, CPoint offset, CPoint extent, CPoint at, unsigned alpha);

    CDrawContext* context; // draws with renderer
    bool loaded = false;
    double width = 0.0;
    double height = 0.0;
    std::unique_ptr<IOSBitmap> memory;
    double imageScale = 1.0;
    PelmoAGG::Image image;
    BitmapRenditions renditions;
    std::unique_ptr<PelmoAGG> renderer; // draws into memory
};
}
