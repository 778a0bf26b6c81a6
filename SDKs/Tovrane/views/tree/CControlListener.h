// SPDX-License-Identifier: GPL-3.0-or-later
// Is told what a user does with a control. Editors and menus implement it. [window thread]
#pragma once

namespace Tovra
{
class CControl;

class CControlListener
{
public:
    virtual ~CControlListener() = default;

    virtual void valueChanged(CControl*) {}
    // A click with a modifier key. If the answer is not 0 the control does not get it.
    virtual long controlModifierClicked(CControl*, long) { return 0; }
    virtual void controlBeginEdit(CControl*) {}
    virtual void controlEndEdit(CControl*) {}
};
}
