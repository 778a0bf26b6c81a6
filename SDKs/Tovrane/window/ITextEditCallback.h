// What a live text field asks and tells the view that opened it. Rectangles are in frame coordinates.
#pragma once

#include "Tovrane/base/CRect.h"
#include "Tovrane/draw/CColor.h"
#include "Tovrane/window/TovraKeyCode.h"

namespace Tovra
{
class ITextEditCallback
{
public:
    virtual ~ITextEditCallback() = default;

    // [window thread]  Both are drawn opaque.
    virtual CColor textEditGetBackColor() const = 0;
    virtual CColor textEditGetFontColor() const = 0;
    // [window thread]  The field, whose height makes the height of its font, and the part of it that is not
    // clipped away.
    virtual CRect textEditGetSize() const = 0;
    virtual CRect textEditGetVisibleSize() const = 0;
    // [window thread]  The user ended the edit: true with the return key, false by cancelling. The view
    // usually destroys the field in here, so the field must not touch itself afterwards.
    virtual void textEditLooseFocus(bool byReturn) = 0;
    // [window thread]  Every key ahead of the field. kKeyConsumed: the field does not get it, and may be
    // gone; else kKeyNotHandled.
    virtual long textEditOnKeyDown(const TovraKeyCode& code) = 0;
    // [window thread]  From frame coordinates to those of the window.
    virtual void convertPluginToWorld(CRect& rect) const = 0;
};
}
