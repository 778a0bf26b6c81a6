// A picture: a PNG decoded once into premultiplied memory, from then on blended by the renderer.
//
// Premultiplying shifts where it would have to divide, so full white comes out as 254: it is part of the look
// of every picture. A PNG that fails on the way is shown as far as it came. Above 8192 pixels a side, or 64
// MiB in all, a PNG is refused: nothing of it came.
//
// Shared by count: who keeps one remembers it. [window thread]
#pragma once

#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/draw/PelmoAGG.h"

#include <memory>

struct png_info_def;
struct png_struct_def;

namespace Tovra
{
class CDrawContext;
class IOSBitmap;
class ITovraPNGStream;
struct CPoint;
struct CRect;
struct CResourceDescription;

class CBitmap : public CBaseObject
{
public:
    // From the file, or from the resources that are bound. What cannot be opened gives a picture of 0 x 0,
    // which draws nothing.
    CBitmap(const char* name, bool fromFile);
    ~CBitmap() override;
    CBitmap(const CBitmap&) = delete;
    CBitmap& operator=(const CBitmap&) = delete;

    // The part from offset on, as large as the rectangle, with its top left on the rectangle's. The last row
    // and column of the context's clip stay free.
    virtual void draw(CDrawContext* context, const CRect& rect, const CPoint& offset);
    // The same.
    virtual void drawTransparent(CDrawContext* context, const CRect& rect, const CPoint& offset);
    // The same with alpha from 0 to 255, on whole pixels at any origin.
    virtual void drawAlphaBlend(CDrawContext* context, const CRect& rect, const CPoint& offset,
                                unsigned char alpha);
    // The source part, in whole pixels, over the whole of the target.
    virtual void drawScaled(CDrawContext* context, const CRect& source, const CRect& target);

    // In place of what was here. False if it could not be opened.
    virtual bool loadFromPath(const void* path);
    // Forgets the picture. Its memory stays for the next one.
    virtual void dispose();
    // The decoder's part of loadFromStream: on an error it jumps past this.
    virtual void loadPNGFromStruct(png_struct_def* png, png_info_def* info);
    virtual bool loadFromResource(const CResourceDescription& description);
    virtual bool loadFromNewResource(const char* name);
    // False for null alone. The stream stays the caller's.
    virtual bool loadFromStream(ITovraPNGStream* stream);

    // The memory to draw from and into; it stays its owner's. Null: none.
    void attachImg(IOSBitmap* bitmap);

    // In pixels.
    double getWidth() const { return width; }
    double getHeight() const { return height; }
    bool isLoaded() const { return loaded; }
    IOSBitmap* getOSBitmap() const { return memory.get(); }
    const PelmoAGG::Image& getImage() const { return image; }
    // For drawing into the picture.
    CDrawContext* getDrawContext() const { return context; }

private:
    void load(ITovraPNGStream& stream);
    void decode(ITovraPNGStream& stream);
    void premultiply();
    // The renderer to draw with; null if there is nothing to do.
    PelmoAGG* drawable(CDrawContext* target) const;

    CDrawContext* context; // without a frame
    bool loaded = false;
    double width = 0.0;
    double height = 0.0;
    std::unique_ptr<IOSBitmap> memory;
    PelmoAGG::Image image;
    std::unique_ptr<PelmoAGG> renderer; // on memory
};
}
