// SPDX-License-Identifier: GPL-3.0-or-later
// What a text field asks the view that opened it, and tells it. Rectangles are in frame coordinates.
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

    // [window thread]  The alpha of both is ignored.
    virtual CColor textEditGetBackColor() const = 0;
    virtual CColor textEditGetFontColor() const = 0;
    // [window thread]  The field, whose height determines the size of its font, and the visible part of it.
    virtual CRect textEditGetSize() const = 0;
    virtual CRect textEditGetVisibleSize() const = 0;
    // [window thread]  The edit has ended: true if the user pressed the return key, false if he cancelled or
    // if the field lost its window. Not called when the frame is closed. The view usually deletes the field
    // meanwhile, so the field must not use its members afterwards.
    virtual void textEditLooseFocus(bool byReturn) = 0;
    // [window thread]  Gets every key before the field does. After kKeyConsumed the field does not get it,
    // and may be deleted; otherwise kKeyNotHandled.
    virtual long textEditOnKeyDown(const TovraKeyCode& code) = 0;
    // [window thread]  Converts from frame to window coordinates.
    virtual void convertPluginToWorld(CRect& rect) const = 0;
};
}
