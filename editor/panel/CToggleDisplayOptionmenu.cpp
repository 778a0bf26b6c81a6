// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/panel/CToggleDisplayOptionmenu.h"

#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/views/controls/DisplayColors.h"
#include "Tovrane/views/tree/CFrame.h"
#include "effect/parameters/TimeAdjust.h"

#include <cstdio>
#include <cstring>

namespace Tovra
{
CToggleDisplayOptionmenu::CToggleDisplayOptionmenu(const CRect& rect, CControlListener* hearer)
    : COptionMenu(rect, hearer, menuTag, nullptr, kCheckStyle)
{
    for (int i = 0; i < gNumTimeAdjustEntries; ++i)
    {
        if (i > 0 && i % gNumSingleTimeAdjustEntries == 0)
            addSeparator();
        addEntry(gTimeAdjustText[i]);
    }
}

bool CToggleDisplayOptionmenu::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "CToggleDisplayOptionmenu") == 0) ||
           COptionMenu::isTypeOf(name);
}

void CToggleDisplayOptionmenu::setTimeAdjust(int index, float newBeats)
{
    beats = newBeats;
    if (!setCurrent(index))
        for (long row = 0; row < getNbEntries(); ++row)
            checkEntry(row, false);
    isKnown = index >= 0 && index < gNumTimeAdjustEntries;
    setDirty(true);
}

std::string CToggleDisplayOptionmenu::shownText() const
{
    if (isKnown && getCurrent() != nullptr)
        return getCurrent()->getTitle();
    char text[32];
    std::snprintf(text, sizeof text, "%.4g", double(beats));
    return text;
}

void CToggleDisplayOptionmenu::updateReadout()
{
    publishReadout(("Time Base: " + shownText()).c_str());
}

MouseEventResult CToggleDisplayOptionmenu::onMouseMoved(CPoint& where, const long& buttons)
{
    if (!hitTest(where, buttons))
        return COptionMenu::onMouseMoved(where, buttons);
    updateReadout();
    return kMouseHandled;
}

void CToggleDisplayOptionmenu::draw(CDrawContext* context)
{
    constexpr double wordsWidth = 36.0;
    const double middle = (size.top + size.bottom) / 2.0, right = size.left + wordsWidth;
    context->setFontColor(kDisplayColor5);
    context->setFont(kNormalFont, 9.0, 0);
    context->drawString("Time", {size.left, size.top, right, middle});
    context->drawString("Base", {size.left, middle, right, size.bottom});
    context->setFont(kNormalFont, 12.0, 0);
    context->setFontColor(kDisplayTextColor);
    context->drawString(shownText().c_str(), {right, size.top, size.right, size.bottom});
    drawFocus(context);
    setDirty(false);
}
}
