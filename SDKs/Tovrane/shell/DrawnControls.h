// SPDX-License-Identifier: GPL-3.0-or-later
// A parameter's state, drawn by lines alone, for views that show it without a control or a picture. In the
// coordinates of the context. [window thread]
#pragma once

#include "Tovrane/draw/CDrawContext.h"

namespace Orbel
{
class ParameterProperty;
}

namespace Tovra
{
// The symbol of a power switch, bright where the parameter is on. Nothing without a property.
void drawOnOffSwitch(CRect rect, CDrawContext* context, Orbel::ParameterProperty* property);

// A ring with a pointer from the lower left to the lower right, and the label below it. What is enabled has
// the colour of the accent and a faint highlight, all else that of the lines. Without a property it points to
// 0.
void drawKnob(CRect rect, CDrawContext* context, Orbel::ParameterProperty* property, const char* label,
              bool isEnabled);
}
