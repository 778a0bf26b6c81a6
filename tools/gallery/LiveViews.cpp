// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/gallery/LiveViews.h"

#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/window/IOptionMenu.h"
#include "tools/gallery/Sketch.h"

using namespace Tovra;

namespace Gallery
{
static void drawButton(CDrawContext& context, const CRect& rect, const std::string& text)
{
    drawPanel(context, rect);
    drawText(context, text, {rect.left + 9, rect.top, rect.right - 9, rect.bottom + 1});
}

MenuButton::MenuButton(const CRect& rect, IMenu& shown) : CView(rect), menu(shown) {}

MenuButton::~MenuButton()
{
    menu.countedObject()->forget();
}

void MenuButton::draw(CDrawContext* context)
{
    drawButton(*context, size, chosen);
    setDirty(false);
}

MouseEventResult MenuButton::onMouseDown(CPoint&, const long&)
{
    const auto popUp = Kept<IOptionMenu>::adopt(getFrame()->createOptionMenu());
    if (popUp)
        popUp->openMenu(menu,
                        [self = Kept<MenuButton>(this)](const MenuChoice& choice) { self->show(choice); });
    return kMouseHandledNoMoves;
}

void MenuButton::show(const MenuChoice& choice)
{
    if (choice.menu == nullptr)
        return;
    chosen = shownTitle(*choice.menu, choice.index);
    setDirty(true);
}

FieldButton::FieldButton(const CRect& rect, std::string shown) : CView(rect), text(std::move(shown)) {}

void FieldButton::draw(CDrawContext* context)
{
    drawButton(*context, size, text);
    setDirty(false);
}

MouseEventResult FieldButton::onMouseDown(CPoint&, const long&)
{
    if (!field)
        field.reset(getFrame()->createOSTextEdit(this, this));
    if (field)
        field->setText(text.c_str());
    return kMouseHandledNoMoves;
}

bool FieldButton::removed(CView* parent)
{
    field.reset();
    return CView::removed(parent);
}

CColor FieldButton::textEditGetBackColor() const
{
    return ground;
}

CColor FieldButton::textEditGetFontColor() const
{
    return ink;
}

CRect FieldButton::textEditGetSize() const
{
    return {size.left + 1, size.top + 4, size.right - 1, size.bottom - 4};
}

void FieldButton::textEditLooseFocus(bool byReturn)
{
    if (byReturn)
        text = field->getText();
    field.reset();
    setDirty(true);
}

void FieldButton::convertPluginToWorld(CRect& rect) const
{
    getFrame()->convertPluginToWorld(rect);
}

AskButton::AskButton(const CRect& rect, std::string shown, Ask asked)
    : CView(rect), text(std::move(shown)), ask(std::move(asked))
{
}

void AskButton::show(const std::string& answer)
{
    text = answer;
    setDirty(true);
}

void AskButton::draw(CDrawContext* context)
{
    drawButton(*context, size, text);
    setDirty(false);
}

MouseEventResult AskButton::onMouseDown(CPoint&, const long&)
{
    ask(*this);
    return kMouseHandledNoMoves;
}
}
