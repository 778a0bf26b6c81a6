// SPDX-License-Identifier: GPL-3.0-or-later
// The effect's editor in a window of a VST 3 host: made by Orbel_VST3::createView, owned by the host.
//
// It keeps the adapter alive. If the adapter is terminated first, the view stays and shows nothing more. An
// effect has one editor: while one view is attached, another cannot be.
// [window thread]
#pragma once

#include "public.sdk/source/common/pluginview.h"

namespace Orbel
{
class IEditor;
class Orbel_VST3;

class Orbel_VST3_EditorView : public Steinberg::CPluginView
{
public:
    Orbel_VST3_EditorView(Orbel_VST3& adapter, IEditor& shown);
    ~Orbel_VST3_EditorView() override;

    Steinberg::tresult PLUGIN_API isPlatformTypeSupported(Steinberg::FIDString type) override;
    // kResultFalse, and nothing is attached, where the editor cannot open in that window or is open in
    // another view.
    Steinberg::tresult PLUGIN_API attached(void* parent, Steinberg::FIDString type) override;
    Steinberg::tresult PLUGIN_API removed() override;
    // kResultTrue if the editor took it. While the view is not attached nothing is taken.
    Steinberg::tresult PLUGIN_API onWheel(float distance) override;
    Steinberg::tresult PLUGIN_API onKeyDown(Steinberg::char16 key, Steinberg::int16 keyCode,
                                            Steinberg::int16 modifiers) override;
    Steinberg::tresult PLUGIN_API onKeyUp(Steinberg::char16 key, Steinberg::int16 keyCode,
                                          Steinberg::int16 modifiers) override;

    // The effect is about to destroy the editor: closes it if it is open.
    void forgetEditor();
    bool isAttached() const { return frame != nullptr; }

private:
    void close();

    Steinberg::IPtr<Orbel_VST3> owner;
    IEditor* editor;          // the effect's; null once it is gone
    IEditor* frame = nullptr; // the same while it is open
};
}
