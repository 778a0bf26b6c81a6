// SPDX-License-Identifier: GPL-3.0-or-later
// Questions and notices to the user, for code that lies below the toolkit.
//
// Whoever can draw a box hands itself over as the presenter; the bundle wires that up. A box never holds a
// host's event loop: it is opened, and its answer comes later. Only a thread of our own may wait for it.
#pragma once

#include <cstdarg>
#include <functional>
#include <string>

namespace Tovra
{
class CFrame;
}

namespace Sonvex
{
enum MessageBoxType
{
    kMessageBoxOk,
    kMessageBoxYesNo,
};

// Gets 0 for no, cancel, and a box that was closed or never shown; 1 for the button that agrees.
using MessageBoxDone = std::function<void(int answer)>;

class IMessageBoxPresenter
{
public:
    // [window thread] [worker]  Shows the box over frame as soon as the boxes before it have been answered,
    // and returns at once. Calls done on the window thread, or destroys it uncalled if the box cannot be
    // shown or the frame closes: that counts as the answer 0.
    virtual void open(Tovra::CFrame* frame, MessageBoxType type, const std::string& title,
                      const std::string& body, MessageBoxDone done) = 0;
    // [window thread] [worker]  Whether the calling thread is one that shows boxes: one that waited there for
    // an answer would wait for itself.
    virtual bool isWindowThread() const = 0;

protected:
    ~IMessageBoxPresenter() = default;
};

// [any thread]  The presenter belongs to the caller and has to outlive every box; null removes it.
void setMessageBoxPresenter(IMessageBoxPresenter* presenter);

// [window thread] [worker]  Shows body as it stands, cut to 431 bytes but never inside a character, and
// returns at once. done is called exactly once: on the window thread when the user has chosen, with 0 when
// the frame closes before that, and with 0 within this call where nobody can show the box (no presenter, no
// open frame). After the caller's own objects have gone it may still be called: it keeps alive what it uses.
void openMessageBox(Tovra::CFrame* frame, MessageBoxType type, const char* title, const std::string& body,
                    MessageBoxDone done);

// [worker]  Shows the same box and waits until it is answered or the frame closes.
//
// [window thread]  Does not wait, because the host's event loop would stand still: a notice is opened, and
// the result is 0 at once. A question is not shown at all, and the result is 0, the answer that changes
// nothing; ask with openMessageBox there.
int MessageBoxModal(Tovra::CFrame* frame, MessageBoxType type, const char* title, const char* body);

// The formatting form below calls this.
int showFormattedMessageBox(Tovra::CFrame* frame, MessageBoxType type, const char* title, const char* format,
                            va_list arguments);

// The same with a printf format and at least one argument for it. (A template, so that a body alone is never
// taken for a format.)
template <int = 0>
[[gnu::format(printf, 4, 5)]] int MessageBoxModal(Tovra::CFrame* frame, MessageBoxType type,
                                                  const char* title, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int answer = showFormattedMessageBox(frame, type, title, format, arguments);
    va_end(arguments);
    return answer;
}

// [any thread but audio]  What the format prints, cut to the length of a body.
[[gnu::format(printf, 1, 2)]] std::string formatMessage(const char* format, ...);
}
