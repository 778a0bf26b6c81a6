// SPDX-License-Identifier: GPL-3.0-or-later
// Views of the gallery that react in a window: they open a menu, a text field, a message or a file panel.
#pragma once

#include "Tovrane/views/tree/CView.h"
#include "Tovrane/window/IMenu.h"
#include "Tovrane/window/IOSTextEdit.h"
#include "Tovrane/window/ITextEditCallback.h"

#include <functional>
#include <memory>
#include <string>

namespace Gallery
{
// [window thread]  A click opens the menu below it; the title of what was chosen is shown then.
class MenuButton : public Tovra::CView
{
public:
    // Takes over the reference to the menu's object.
    MenuButton(const Tovra::CRect& rect, Tovra::IMenu& menu);
    ~MenuButton() override;
    MenuButton(const MenuButton&) = delete;

    void draw(Tovra::CDrawContext* context) override;
    Tovra::MouseEventResult onMouseDown(Tovra::CPoint& where, const long& buttons) override;
    CView* newCopy() const override { return nullptr; }

private:
    void show(const Tovra::MenuChoice& choice);

    Tovra::IMenu& menu;
    std::string chosen = "click for a menu";
};

// [window thread]  A click opens a text field in its place.
class FieldButton : public Tovra::CView, private Tovra::ITextEditCallback
{
public:
    FieldButton(const Tovra::CRect& rect, std::string text);
    FieldButton(const FieldButton&) = delete;

    void draw(Tovra::CDrawContext* context) override;
    Tovra::MouseEventResult onMouseDown(Tovra::CPoint& where, const long& buttons) override;
    bool removed(CView* parent) override;
    CView* newCopy() const override { return nullptr; }

private:
    Tovra::CColor textEditGetBackColor() const override;
    Tovra::CColor textEditGetFontColor() const override;
    Tovra::CRect textEditGetSize() const override;
    Tovra::CRect textEditGetVisibleSize() const override { return textEditGetSize(); }
    void textEditLooseFocus(bool byReturn) override;
    long textEditOnKeyDown(const Tovra::TovraKeyCode&) override { return Tovra::kKeyNotHandled; }
    void convertPluginToWorld(Tovra::CRect& rect) const override;

    std::string text;
    std::unique_ptr<Tovra::IOSTextEdit> field; // while the user types
};

// [window thread]  A click asks the user something; the answer is shown when it comes.
class AskButton : public Tovra::CView
{
public:
    using Ask = std::function<void(AskButton&)>;

    AskButton(const Tovra::CRect& rect, std::string text, Ask asked);

    void show(const std::string& answer);
    void draw(Tovra::CDrawContext* context) override;
    Tovra::MouseEventResult onMouseDown(Tovra::CPoint& where, const long& buttons) override;
    CView* newCopy() const override { return new AskButton(*this); }

private:
    std::string text;
    Ask ask;
};
}
