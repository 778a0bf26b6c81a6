// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a parameter, which follows it. [window thread], except for parameterChanged.
#pragma once

#include "Tovrane/views/controls/CParamDisplay.h"

namespace Tovra
{
class Tovra_ParamDisplay : public CParamDisplay
{
public:
    explicit Tovra_ParamDisplay(const CTextLabelInfo& info);

    // Whether the unit stands behind the value; or below it, in the long form of the text.
    virtual void setRenderUnits(bool flag);
    virtual void setRenderUnitsInSecondLine(bool flag);
    // What is shown, at most 255 bytes.
    std::string getText() const;

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
