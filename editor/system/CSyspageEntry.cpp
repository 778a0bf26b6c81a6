// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/system/CSyspageEntry.h"

#include "Orbel/parameters/ParameterText.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/views/controls/DisplayColors.h"
#include "editor/panel/Tovra_MiniDial.h"

#include <utility>

namespace SYSPAGE_SINGLE
{
using namespace Tovra;

constexpr double gap = 12.0; // between description and value
constexpr double dialWidth = 90.0;

CSyspageEntry::CSyspageEntry(const CRect& rect, const char* text, HintSink sink)
    : CViewContainer(rect), description(text), showHint(std::move(sink))
{
    setTransparency(true);
}

CRect CSyspageEntry::valueRect() const
{
    return {size.getWidth() / 2.0, 0.0, size.getWidth(), size.getHeight()};
}

void CSyspageEntry::drawBackgroundRect(CDrawContext* context, CRect&)
{
    context->setFont(kNormalFont, 11.0, 0);
    context->setFontColor(kDisplayColor5);
    context->drawString(description.c_str(), {0.0, 0.0, valueRect().left - gap, size.getHeight()}, true,
                        kTextRight);
}

MouseEventResult CSyspageEntry::onMouseMoved(CPoint& where, const long& buttons)
{
    const CPoint inside(where.x - size.left, where.y - size.top);
    const MouseEventResult result = CViewContainer::onMouseMoved(where, buttons);
    showHint(hintAt(inside));
    return result;
}

MouseEventResult CSyspageEntry::onMouseExited(CPoint& where, const long& buttons)
{
    const MouseEventResult result = CViewContainer::onMouseExited(where, buttons);
    showHint({});
    return result;
}

CSingleSyspageControl::CSingleSyspageControl(const CRect& rect, const char* text,
                                             Orbel::ParameterProperty* shown, HintSink sink)
    : CSyspageEntry(rect, text, std::move(sink)), property(shown)
{
    Tovra_MiniDial::CInfo info;
    info.rect = valueRect();
    info.rect.right = info.rect.left + dialWidth;
    info.attachedProperty = property;
    info.font = kNormalFont;
    info.fontSize = 12;
    info.textColor = kDisplayColor5;
    dial = new Tovra_MiniDial(info);
    addView(dial);
}

std::string CSingleSyspageControl::hintAt(const CPoint&) const
{
    char text[Orbel::kParameterTextSize] = {};
    Orbel::renderDualPropertyText(property, nullptr, text);
    return text;
}
}
