// SPDX-License-Identifier: GPL-3.0-or-later
// The menu of the time base, flat, in three groups: plain, triplets, dotted. [window thread]
#pragma once

#include "Tovrane/views/controls/COptionMenu.h"

namespace Tovra
{
class CToggleDisplayOptionmenu : public COptionMenu
{
public:
    static constexpr long menuTag = 'T' << 24 | 'I' << 16 | 'M' << 8 | 'E';

    // The listener gets the number of the chosen time base, one of gTimeAdjustMultiplier, as the value.
    CToggleDisplayOptionmenu(const CRect& rect, CControlListener* listener);

    // Nothing is checked for an index that is none, and the number of beats is shown.
    void setTimeAdjust(int index, float beats);

    void draw(CDrawContext* context) override;
    MouseEventResult onMouseMoved(CPoint& where, const long& buttons) override;
    void updateReadout() override;
    bool isTypeOf(const char* name) const override;
    const char* getClassName() const override { return "CToggleDisplayOptionmenu"; }

private:
    std::string shownText() const;

    float beats = 1.0f;
    bool isKnown = false; // one of the fifteen
};
}
