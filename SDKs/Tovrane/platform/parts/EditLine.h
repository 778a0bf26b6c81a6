// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a one-line field, with its caret and selection: what keys do to it, without a window.
//
// Positions are bytes, always between two characters. The text stays valid UTF-8 without control characters,
// whatever is put in, and never exceeds its limit.
#pragma once

#include "Tovrane/window/TovraKeyCode.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Tovra
{
// [window thread]
class EditLine
{
public:
    // limit: the maximum size of the text, in bytes.
    explicit EditLine(std::size_t limit) : most(limit) {}

    const std::string& text() const { return line; }
    std::size_t caret() const { return caretAt; }
    std::size_t selectionStart() const { return caretAt < anchor ? caretAt : anchor; }
    std::size_t selectionEnd() const { return caretAt < anchor ? anchor : caretAt; }
    bool hasSelection() const { return caretAt != anchor; }
    std::string selected() const;

    // Replaces all of it and selects it.
    void setText(std::string_view next);
    void selectAll();
    // Selects the word, or the run of other characters, around a position.
    void selectWord(std::size_t at);
    // Moves the caret. With extend, the other end of the selection stays where it is.
    void moveTo(std::size_t at, bool extend);

    enum Step
    {
        character,
        word,
        wholeLine
    };
    // Moves the caret by one step. Without extend, a selection collapses to its end in that direction.
    void move(Step step, bool forward, bool extend);
    // Deletes the selection, or, without one, one step in that direction.
    void erase(Step step, bool forward);
    // Replaces the selection. What exceeds the limit is cut off at the end of added.
    void insert(std::string_view added);
    // What a key does to the line: it moves the caret, with shift over a selection and with command by words,
    // deletes, selects all of it (command and A), or inserts what it types. False if it does nothing here.
    bool key(const TovraKeyCode& code, std::string_view typed);

private:
    bool navigate(const TovraKeyCode& code);
    std::size_t target(Step step, bool forward) const;

    const std::size_t most;
    std::string line;
    std::size_t caretAt = 0;
    std::size_t anchor = 0; // the other end of the selection
};

// [any thread]  What a key types that comes without its text, as hosts pass keys on. UTF-8.
std::string typedBy(const TovraKeyCode& code);

// [any thread]  The text on one line: broken characters and control characters are left out, a line end or
// tab becomes a space, and line ends at the very end vanish.
std::string onOneLine(std::string_view text);
}
