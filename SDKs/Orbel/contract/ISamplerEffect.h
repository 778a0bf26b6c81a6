// SPDX-License-Identifier: GPL-3.0-or-later
// What an adapter asks of an effect that has an editor window. [window thread]
#pragma once

namespace Tovra
{
class CRect;
}

namespace Orbel
{
class OrbelOS;

class ISamplerEffect
{
public:
    virtual ~ISamplerEffect() = default;

    // The size that the editor's window wants; without an editor the rectangle stays as it is.
    virtual void getEditorSize(Tovra::CRect& rectangle) = 0;
    // Opens the editor in the host's view or window, and closes it again.
    virtual void open_editor(void* parentWindow) = 0;
    virtual void close_editor() = 0;
};

// The editor interface of an effect; null if the effect is null or has none.
ISamplerEffect* getSamplerInterface(OrbelOS* effect);
}
