// SPDX-License-Identifier: GPL-3.0-or-later
// The small value field of a settings page: drag up and down, wheel, arrows, middle click, and a double click
// to type, as with every value box. A switch is on or off and nothing in between, and a click turns it over.
// [window thread]
#pragma once

#include "Tovrane/views/controls/CTextEdit.h"

namespace Tovra
{
class Tovra_MiniDial : public Tovra_TextEdit
{
public:
    struct CInfo : Tovra_TextEdit::CInfo
    {
        void createObject() override;
    };

    explicit Tovra_MiniDial(const CInfo& info);

    void draw(CDrawContext* context) override;
    // A unit beyond the edges hits, too.
    bool hitTest(const CPoint& where, long buttons = -1) override;
    MouseEventResult onMouseDown(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseUp(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseEntered(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseExited(CPoint& where, const long& buttons) override;
    void cancelEdit() override;
    bool isTypeOf(const char* name) const override;
    const char* getClassName() const override { return "Tovra_MiniDial"; }

protected:
    void write(float next) override;

private:
    bool isSwitch() const;
    void turnOver();

    bool isPointedAt = false;
    bool isUnmoved = false;  // since the press
    bool isReleased = false; // by the user, which ends the gesture now
};
}
