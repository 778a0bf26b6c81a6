// SPDX-License-Identifier: GPL-3.0-or-later
// What a frame needs from the editor that owns it: the scale between window and plug-in, the effect's sample
// rate and tempo, and a way to tell the host about edits. The editor shell implements it.
#pragma once

#include "Tovrane/base/CPoint.h"
#include "Tovrane/base/CRect.h"

namespace Orbel
{
class ParameterProperty;
}

namespace Tovra
{
class IFrameEditor
{
public:
    // [window thread]  Convert between the pixels of the window and the coordinates of the views.
    virtual void convertWorldToPlugin(CPoint& point) const = 0;
    virtual void convertPluginToWorld(CPoint& point) const = 0;
    virtual void convertPluginToWorld(CRect& rect) const = 0;

    // [any thread]  In beats a minute; -1 without an effect.
    virtual double getEffectTempo() const = 0;
    // [any thread]  In hertz; 44100 without an effect.
    virtual double getSampleRate() const = 0;

    // [window thread]  A gesture on a parameter, for the host's automation. The property is never null.
    virtual void beginEdit(Orbel::ParameterProperty* property) = 0;
    virtual void endEdit(Orbel::ParameterProperty* property) = 0;
    virtual void performEdit(Orbel::ParameterProperty* property) = 0;

protected:
    ~IFrameEditor() = default;
};
}
