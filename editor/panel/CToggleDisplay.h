// SPDX-License-Identifier: GPL-3.0-or-later
// The panel of seven dials and the time base, which slides in from the right edge of the display while the
// mouse is on it, and out again a while after the mouse has left. What lies below it is blurred.
//
// Closed and at rest it costs nothing: its timer runs only while something is going to move. [window thread]
#pragma once

#include "Orbel/parameters/CPropertyManager.h"
#include "Tovrane/base/CTimerObject.h"
#include "Tovrane/views/tree/CViewContainer.h"

namespace Tovra
{
class CControlListener;
class CToggleDisplayDial;
class CToggleDisplayOptionmenu;

class CToggleDisplay : public CViewContainer, private CTimerObject
{
public:
    // rect is its size; both positions are of its top left. The listener hears of the time base. Without a
    // picture of its ground it is drawn plainly.
    CToggleDisplay(const CRect& rect, const CPoint& closedPosition, const CPoint& openPosition,
                   const Orbel::CPropertyManager& manager, CControlListener* listener,
                   CBitmap* ground = nullptr);
    CToggleDisplay(const CToggleDisplay&) = delete;

    void setTimeAdjust(int index, float beats);
    // The dial of the release time. It stays the panel's.
    CToggleDisplayDial* getReleaseDial() const { return releaseDial; }
    // 0 closed to 1 open.
    float getSlide() const { return slide; }
    // Slides out at once.
    void shut();
    // Ahead of painting: where something below or within it is drawn again, all of it is, because a blur
    // looks beyond that part.
    void coverDirt();

    void drawRect(CDrawContext* context, const CRect& update) override;
    void drawBackgroundRect(CDrawContext* context, CRect& update) override;
    MouseEventResult onMouseEntered(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseExited(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseDown(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseUp(CPoint& where, const long& buttons) override;
    bool isTypeOf(const char* name) const override;
    CView* newCopy() const override { return nullptr; }
    const char* getClassName() const override { return "CToggleDisplay"; }

private:
    void addDials(const Orbel::CPropertyManager& manager);
    void onTimer(int milliseconds) override;
    void beginClosing();
    void moveTo(float share);

    const CPoint closedPosition;
    const CPoint openPosition;
    bool closing = true;
    float slide = 0.0f;
    float holdTime = 0.0f;                        // milliseconds since the mouse has left
    CToggleDisplayOptionmenu* timeMenu = nullptr; // these two are children
    CToggleDisplayDial* releaseDial = nullptr;
};
}
