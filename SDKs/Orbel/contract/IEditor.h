// SPDX-License-Identifier: GPL-3.0-or-later
// An effect's editor, as far as the framework and its adapters know it: something that the effect owns and
// destroys, and that shows itself inside a window of the host. The toolkit's editor shell implements it.
//
// Every operation has a harmless default, so that an editor implements only what it has. [window thread]
#pragma once

#include "CORE/KeyCode.h"

namespace Orbel
{
class IEditor
{
public:
    virtual ~IEditor() = default;

    // Its size in pixels, whether it is open or not.
    virtual void getSize(double& width, double& height) const { width = height = 0.0; }
    // A size that the host asks for. False if the editor stays as large as it is.
    virtual bool setSize(double /*width*/, double /*height*/) { return false; }

    // Opens inside the host's window. platformType names the kind of that window as VST 3 does. False if
    // there is nothing to see.
    virtual bool open(void* /*parentWindow*/, const char* /*platformType*/) { return false; }
    virtual void close() {}
    // A turn of the host's event loop, from hosts that give one.
    virtual void idle() {}
    // Paints the whole window, for hosts that tell a plug-in when to.
    virtual void draw() {}

    // True where the editor took it.
    virtual bool onWheel(float /*distance*/) { return false; }
    virtual bool onKeyDown(const Core::KeyCode&) { return false; }
    virtual bool onKeyUp(const Core::KeyCode&) { return false; }
};
}
