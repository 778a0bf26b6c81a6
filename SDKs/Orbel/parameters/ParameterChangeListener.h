// SPDX-License-Identifier: GPL-3.0-or-later
// Hears of every write to the parameters that it was added to.
#pragma once

namespace Orbel
{
class ParameterProperty;

class ParameterChangeListener
{
public:
    virtual ~ParameterChangeListener() = default;

    // [any thread]  The property has been written (its value may be the same as before). Runs on the
    // thread of the write, which may be the audio thread: store, mark dirty and return.
    virtual void parameterChanged(ParameterProperty* property) = 0;
};
}
