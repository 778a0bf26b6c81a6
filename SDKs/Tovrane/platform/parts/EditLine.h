// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a one-line field, with its caret and selection: what keys do to it, without a window.
//
// Positions are bytes, always between two characters. The text stays valid UTF-8 without control characters,
// whatever is put in, and never exceeds its limit.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Tovra
{
// [window thread]
class EditLine
{
public:
    // The most bytes that it holds.
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
    // The word, or the run of other characters, around a position.
    void selectWord(std::size_t at);
    // With extend the other end of the selection stays.
    void moveTo(std::size_t at, bool extend);

    enum Step
    {
        character,
        word,
        wholeLine
    };
    // Without extend a selection falls together at the end that lies that way.
    void move(Step step, bool forward, bool extend);
    // The selection, or else what lies one step that way.
    void erase(Step step, bool forward);
    // In place of the selection. What has no room is left out, from the end.
    void insert(std::string_view added);

private:
    std::size_t target(Step step, bool forward) const;

    const std::size_t most;
    std::string line;
    std::size_t caretAt = 0;
    std::size_t anchor = 0; // the other end of the selection
};

// [any thread]  The text on one line: broken characters and control characters are left out, a line end or
// tab becomes a space, and line ends at the very end vanish.
std::string onOneLine(std::string_view text);
}
