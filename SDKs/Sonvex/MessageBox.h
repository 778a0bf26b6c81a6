// SPDX-License-Identifier: GPL-3.0-or-later
// Questions and notices to the user, for code that lies below the toolkit.
//
// Whoever can draw a box hands itself over as the presenter; the bundle wires that up.
#pragma once

#include <cstdarg>

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

class IMessageBoxPresenter
{
public:
    // [window thread] [worker]  Shows the box over frame (null: over nothing) and returns when the user has
    // chosen: 0 for no, cancel or a closed box, another number for the button that agrees.
    virtual int show(Tovra::CFrame* frame, MessageBoxType type, const char* title, const char* body) = 0;

protected:
    ~IMessageBoxPresenter() = default;
};

// [any thread]  The presenter belongs to the caller and has to outlive every box; null removes it.
void setMessageBoxPresenter(IMessageBoxPresenter* presenter);

// [window thread] [worker]  Shows body as it stands, cut to 431 bytes but never inside a character, and
// answers as show does. Without a presenter the answer is 0, the negative one.
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
}
