// A live one-line text field over the frame, while a user types. IFrame::createPlatformTextEdit makes it, and
// whoever asked for it deletes it, often from within its own callback.
#pragma once

#include "Tovrane/window/TovraKeyCode.h"

namespace Tovra
{
class IOSTextEdit
{
public:
    // What getText hands out at most, the end included; longer texts are cut between two characters.
    static constexpr int textSize = 256;

    virtual ~IOSTextEdit() = default;

    // [window thread]  UTF-8; stays valid until the next call on this field.
    virtual const char* getText() = 0;
    // [window thread]  Replaces the text and selects all of it. False if it could not be shown.
    virtual bool setText(const char* text) = 0;
    // [window thread]  Takes place and clipping from the callback anew. False if that failed.
    virtual bool updateSize() = 0;
    // [window thread]  Keys that the frame got; kKeyNotHandled if the field has no use for them.
    virtual long onKeyDown(TovraKeyCode&) { return kKeyNotHandled; }
    virtual long onKeyUp(TovraKeyCode&) { return kKeyNotHandled; }
};
}
