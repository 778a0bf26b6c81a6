// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of the system page: a description at the left, a value at the right, and a hint while the mouse is
// on it. [window thread]
#pragma once

#include "Tovrane/views/tree/CViewContainer.h"

#include <functional>
#include <string>

namespace Orbel
{
class ParameterProperty;
}

namespace Tovra
{
class Tovra_MiniDial;
}

namespace SYSPAGE_SINGLE
{
// Gets the text about what is under the mouse; an empty one when the mouse has left.
using HintSink = std::function<void(const std::string&)>;

class CSyspageEntry : public Tovra::CViewContainer
{
public:
    CSyspageEntry(const Tovra::CRect& rect, const char* description, HintSink sink);
    CSyspageEntry(const CSyspageEntry&) = delete;

    void drawBackgroundRect(Tovra::CDrawContext* context, Tovra::CRect& update) override;
    Tovra::MouseEventResult onMouseMoved(Tovra::CPoint& where, const long& buttons) override;
    Tovra::MouseEventResult onMouseExited(Tovra::CPoint& where, const long& buttons) override;
    CView* newCopy() const override { return nullptr; }
    const char* getClassName() const override { return "CSyspageEntry"; }

protected:
    // Where the value stands, in the entry.
    Tovra::CRect valueRect() const;
    // About a place in the entry.
    virtual std::string hintAt(const Tovra::CPoint&) const { return {}; }

private:
    const std::string description;
    const HintSink showHint;
};

// A parameter with its field.
class CSingleSyspageControl : public CSyspageEntry
{
public:
    // The parameter stays its owner's.
    CSingleSyspageControl(const Tovra::CRect& rect, const char* description, Orbel::ParameterProperty* shown,
                          HintSink sink);

    Tovra::Tovra_MiniDial* getDial() const { return dial; }

protected:
    std::string hintAt(const Tovra::CPoint& where) const override;

private:
    Orbel::ParameterProperty* const property;
    Tovra::Tovra_MiniDial* dial; // a child
};
}
