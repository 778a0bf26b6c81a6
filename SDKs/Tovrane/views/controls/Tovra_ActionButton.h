// SPDX-License-Identifier: GPL-3.0-or-later
// A button with two states, whose bitmap shows off above on: it is on while it is held, or a click flips it.
// It may fade from one picture to the other. [window thread], except for parameterChanged.
#pragma once

#include "Tovrane/views/tree/CControl.h"

namespace Tovra
{
class Tovra_ActionButton : public CControl
{
public:
    enum Mode
    {
        kMomentary = 0,
        kToggle = 1
    };

    // fadeSpeed: times the whole way in a tenth of a second of its six frames. See getFPSCoeff.
    Tovra_ActionButton(const CRect& rect, CControlListener* listener, long tag, CBitmap* bitmap, Mode mode,
                       bool fading, float fadeSpeed);

    // Of the pictures in the bitmap; the one for on lies as much lower as the button is high.
    virtual void setOffset(const CPoint& offset);
    // Whether the pictures change places.
    void setInverted(bool flag);
    bool isOn() const { return state; }

    void setValue(float newValue) override;
    void draw(CDrawContext* context) override;
    MouseEventResult onMouseDown(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseMoved(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseUp(CPoint& where, const long& buttons) override;
    bool holdsMouse() const override { return isEdited(); }
    long onKeyDown(TovraKeyCode& code) override;
    void parameterChanged(Orbel::ParameterProperty* property) override;
    void cancelEdit() override;
    bool isTypeOf(const char* name) const override;
    CView* newCopy() const override { return new Tovra_ActionButton(*this); }
    const char* getClassName() const override { return "Tovra_ActionButton"; }

private:
    void press();
    void release();
    void show(bool on);
    void write();
    void drawRow(CDrawContext& context, bool on, unsigned char alpha);

    const Mode mode;
    const bool fades;
    const float speed;
    bool isInverted = false;
    Core::Relaxed<bool> state = false; // these two are written by any thread that writes the parameter
    Core::Relaxed<long> lastTick = 0;
    double level = -1.0; // of the picture for on, up to 255; below 0 until it is drawn
    long button = 0;     // that opened the gesture
};

// [window thread]  The part of so many frames, 60 in a second, that has passed since last, from 0 to 1; sets
// last to now. In milliseconds of Tovra_getTicks.
double getFPSCoeff(long& last, double frames);
}
