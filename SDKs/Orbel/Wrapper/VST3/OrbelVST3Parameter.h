// SPDX-License-Identifier: GPL-3.0-or-later
// One ParameterProperty as a host's parameter.
//
// It keeps no value of its own: what a host reads is what the property holds, whoever wrote it last.
// The property is not owned and outlives it. Texts and their inverse on the window thread; the value and
// the mark of a gesture on any thread.
#pragma once

#include "CORE/Relaxed.h"
#include "Orbel/parameters/ParameterProperty.h"
#include "public.sdk/source/vst/vstparameters.h"

namespace Orbel
{
class OrbelVST3Parameter : public Steinberg::Vst::Parameter
{
public:
    using ParamValue = Steinberg::Vst::ParamValue;

    OrbelVST3Parameter(ParameterProperty* shown, Steinberg::Vst::ParamID id, bool isProgramChange,
                       Steinberg::int32 stepCount, bool isBypass);

    // Hides the base's, which is not virtual and reads a value of its own.
    ParamValue getNormalized() const { return property->getCurrentValue_normalized(); }
    // Does nothing while a gesture of the editor goes on.
    bool setNormalized(ParamValue position) override;

    // These two do not clamp.
    ParamValue toPlain(ParamValue position) const override { return property->denormalize(position); }
    ParamValue toNormalized(ParamValue plain) const override { return property->normalize(plain); }

    void toString(ParamValue position, Steinberg::Vst::String128 text) const override;
    // Reads the number at the start of text, in the parameter's own unit. The parameter takes it at once,
    // clamped to its range; position is not clamped to 0 to 1. False if there is no number.
    bool fromString(const Steinberg::Vst::TChar* text, ParamValue& position) const override;

    ParameterProperty* getProperty() const { return property; }

    // Set while the user drags: what the host sends for the parameter meanwhile is ignored.
    // Written on the window thread, read on the audio thread.
    Core::Relaxed<bool> editing = false;

private:
    ParameterProperty* const property;
};
}
