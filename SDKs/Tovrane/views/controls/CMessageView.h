// SPDX-License-Identifier: GPL-3.0-or-later
// A message or a question over a dimmed frame, with its one or two buttons.
//
// As the frame's modal view it covers the whole frame and takes every click and every key until it is
// answered: by a click, by return or space on the button that has the focus (tab and the arrow keys move it),
// or by escape, which is the negative answer. A question begins with the focus on "No", so that a key that
// was meant for something else agrees to nothing. Removed without an answer, it gives the negative one.
//
// All of it is [window thread].
#pragma once

#include "Sonvex/AnswerOnce.h"
#include "Sonvex/MessageBox.h"
#include "Tovrane/views/tree/CView.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace Tovra
{
struct Message
{
    Sonvex::MessageBoxType type = Sonvex::kMessageBoxOk;
    std::string title;
    std::string body; // may have several lines
};

class CMessageView : public CView
{
public:
    // done gets 1 for "OK" and "Yes" and 0 for anything else, exactly once; by then the view has left the
    // frame. An empty done is not called.
    CMessageView(const CRect& rect, Message shown, Sonvex::MessageBoxDone done);
    CMessageView(const CMessageView&) = delete;

    // Shows a message as the frame's modal view, with the focus; the view that had the focus gets it back
    // afterwards. What the mouse holds is released first. False if another modal view is open: then done is
    // not called.
    static bool open(CFrame& frame, const Message& message, const Sonvex::MessageBoxDone& done);

    // As if the user had chosen.
    void answer(int given);

    const Message& getMessage() const { return message; }
    // Where the user sees what, in the parent's coordinates.
    const CRect& boxRect() const { return box; }
    const CRect& buttonRect(int button) const { return buttons[std::size_t(button)].rect; }
    // "OK", or "No" and "Yes".
    int buttonCount() const { return message.type == Sonvex::kMessageBoxOk ? 1 : 2; }
    const std::vector<std::string>& shownLines() const { return lines; }
    int focusedButton() const { return focused; }

    void draw(CDrawContext* context) override;
    MouseEventResult onMouseDown(CPoint& where, const long& mouse) override;
    MouseEventResult onMouseUp(CPoint& where, const long& mouse) override;
    MouseEventResult onMouseMoved(CPoint& where, const long& mouse) override;
    MouseEventResult onMouseExited(CPoint& where, const long& mouse) override;
    long onKeyDown(TovraKeyCode& code) override;
    long onKeyUp(TovraKeyCode& code) override;
    bool attached(CView* parent) override;
    bool removed(CView* parent) override;
    void parentSizeChanged() override;
    void setViewSize(const CRect& rect, bool invalidate = true) override;
    CView* newCopy() const override { return nullptr; }
    const char* getClassName() const override { return "CMessageView"; }

private:
    struct Button
    {
        const char* text;
        int answer;
        CRect rect;
    };

    void layOut();
    void placeBox(double width, std::size_t lineCount);
    int buttonAt(const CPoint& where) const;
    void setHovered(int button);
    void moveFocus(int step);
    void leaveFrame();
    void drawTexts(CDrawContext& context) const;
    void drawButton(CDrawContext& context, int button) const;

    const Message message;
    Sonvex::AnswerOnce<int> answerOnce;
    std::array<Button, 2> buttons; // of a message only the first
    CRect box;
    std::string title; // as it fits
    std::vector<std::string> lines;
    int hovered = -1; // buttons by number, -1 for none
    int pressed = -1; // the one on which the mouse was pressed
    int focused = 0;
    bool isLeaving = false; // because it was answered
    Kept<CView> focusedBefore;
};
}
