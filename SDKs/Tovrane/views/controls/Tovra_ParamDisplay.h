// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a parameter, which follows it. [window thread], except for parameterChanged.
#pragma once

#include "Tovrane/views/controls/CParamDisplay.h"
#include "Tovrane/views/tree/Tovra_ObjectConstructorInfoBase.h"

namespace Tovra
{
// Describes what shows text: its place and parameter, and its looks.
struct CTextLabelInfo : Tovra_ObjectConstructorInfoBase
{
    bool mouseEnabled = true; // without it the display takes no events, and has no mouseable area
    CHoriTxtAlign alignment = kTextCenter;
    long style = 0;            // of CParamDisplay
    CFontDesc* font = nullptr; // null for the usual one
    int fontSize = 0;          // 0 for the font's own
    CColor textColor = kWhiteCColor;
    CColor frameColor = kGreyCColor;
    bool transparency = false;
    bool renderUnits = true;
    bool renderUnitsInSecondLine = false;
};

class Tovra_ParamDisplay : public CParamDisplay
{
public:
    explicit Tovra_ParamDisplay(const CTextLabelInfo& info);

    // Whether the unit stands behind the value; or below it, in the long form of the text.
    virtual void setRenderUnits(bool flag);
    virtual void setRenderUnitsInSecondLine(bool flag);
    // What is shown, at most 255 bytes.
    std::string getText() const;

    void setAttachedProperty(Orbel::ParameterProperty* property) override;
    void parameterChanged(Orbel::ParameterProperty* property) override;
    void draw(CDrawContext* context) override;
    bool isTypeOf(const char* name) const override;
    // Bound to its parameter, it is not copied.
    CView* newCopy() const override { return nullptr; }
    const char* getClassName() const override { return "Tovra_ParamDisplay"; }

private:
    Core::Relaxed<bool> rendersUnits;
    Core::Relaxed<bool> rendersUnitsBelow;
};
}
