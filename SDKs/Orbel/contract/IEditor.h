// SPDX-License-Identifier: GPL-3.0-or-later
// An effect's editor, as far as the framework and its adapters know it: something that the effect owns and
// destroys, and that shows itself inside a window of the host. The toolkit's editor shell implements it.
//
// Every operation has a harmless default, so that an editor implements only what it has. [window thread]
#pragma once

#include "CORE/KeyCode.h"

namespace Orbel
{
// The place in a host's window that an editor is shown in; the adapter implements it. [window thread]
class IEditorWindow
{
public:
    // The editor needs another size, in pixels, and shows itself in it already. False if the host refuses.
    virtual bool resize(double width, double height) = 0;

protected:
    ~IEditorWindow() = default;
};

class IEditor
{
public:
    virtual ~IEditor() = default;

    // Its size in pixels, whether it is open or not.
    virtual void getSize(double& width, double& height) const { width = height = 0.0; }
    // Where the editor is about to be opened; null after it was closed. Not owned.
    virtual void setWindow(IEditorWindow*) {}
    // Pixels of the host's window to a unit of the editor, if the host tells: at any time, open or not. What
    // is no scale (0 or below, not finite) counts as not told.
    virtual void setContentScale(double /*pixelsPerUnit*/) {}

    // Opens inside the host's window. platformType names the kind of that window as VST 3 does. False if
    // there is nothing to see.
    virtual bool open(void* /*parentWindow*/, const char* /*platformType*/) { return false; }
    virtual void close() {}
    virtual bool isOpen() const { return false; }
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
