// SPDX-License-Identifier: GPL-3.0-or-later
// What the effect asks of its window, and what the window asks of the effect's maker.
//
// The effect owns its editor object from its construction to its end; the window itself opens and closes
// in between. Editor and toolkit stand above the effect, so they hand themselves over: setEditorFactory
// is called once, when the bundle is loaded. Without a factory the effect has no editor.
#pragma once

#include "Orbel/contract/IEditor.h"

#include <memory>

namespace Orbel
{
class CPropertyManager;
}

namespace Tovra
{
class CRect;
}

class CQDT_DKS_Single;

class IEffectEditor : public virtual Orbel::IEditor
{
public:
    // [window thread] The effect's parameters, which it keeps.
    virtual void setPropertyManager(Orbel::CPropertyManager* manager) = 0;
    // [audio stopped] In hertz.
    virtual void setSampleRate(float rate) = 0;
    // [audio thread] or the thread that makes the effect: in beats a minute. Must not block.
    virtual void setTempo(float beatsPerMinute) = 0;
    // [window thread] The interval between triggers in beats, after a preset was loaded.
    virtual void setTimeAdjust(float beats) = 0;
    // [audio thread] There is new scope data; samples of -1 means a block like any other. Must not block.
    virtual void updateScopes(bool immediate, int samples) = 0;
    // [audio thread] That many samples have passed while bypassed. Must not block.
    virtual void updateData(long samples) = 0;

    // [window thread] The same as getSize, open and close, under the names that ISamplerEffect forwards to.
    virtual void getEditorSize(Tovra::CRect& rectangle) = 0;
    void open_sampler_editor(void* parentWindow) { open(parentWindow, nullptr); }
    void close_sampler_editor() { close(); }
};

using EditorFactory = std::unique_ptr<IEffectEditor> (*)(CQDT_DKS_Single&);

// Null for no editor; effects that exist already keep what they have.
void setEditorFactory(EditorFactory factory);
EditorFactory getEditorFactory();
