// SPDX-License-Identifier: GPL-3.0-or-later
// A one-line text field over the frame, while a user edits a text. IFrame::createPlatformTextEdit makes it,
// and the caller deletes it, often from within the field's callback.
#pragma once

#include "Tovrane/window/TovraKeyCode.h"

namespace Tovra
{
class IOSTextEdit
{
public:
    // The maximum of bytes of a text, including the NUL; longer texts are cut between two characters.
    static constexpr int textSize = 256;

    virtual ~IOSTextEdit() = default;

    // [window thread]  UTF-8, valid until the next call on this field.
    virtual const char* getText() = 0;
    // [window thread]  Replaces the text and selects it. False if it could not be shown.
    virtual bool setText(const char* text) = 0;
    // [window thread]  Asks the callback for position and clipping again. False if that failed.
    virtual bool updateSize() = 0;
    // [window thread]  Keys that the frame got; kKeyNotHandled if the field does not use them.
    virtual long onKeyDown(TovraKeyCode&) { return kKeyNotHandled; }
    virtual long onKeyUp(TovraKeyCode&) { return kKeyNotHandled; }
};
}
