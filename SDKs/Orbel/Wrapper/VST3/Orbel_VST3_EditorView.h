// SPDX-License-Identifier: GPL-3.0-or-later
// The effect's editor in a window of a VST 3 host: made by Orbel_VST3::createView, owned by the host.
//
// It keeps the adapter alive. If the adapter is terminated first, the view stays and shows nothing more. An
// effect has one editor: while one view is attached, another cannot be. A view can be removed and attached
// again, also to another window.
//
// From attached to removed the host's run loop drives the editor's timers and descriptors. The host may give
// the loop with the view's frame or with its context, and the frame before attached or after it.
//
// The host cannot choose the size: it follows from the editor's scale, and a new one is asked for with
// resizeView.
// [window thread]
#pragma once

#include "Orbel/Wrapper/VST3/HostRunLoop.h"
#include "Orbel/contract/IEditor.h"
#include "pluginterfaces/gui/iplugviewcontentscalesupport.h"
#include "public.sdk/source/common/pluginview.h"

#include <memory>

namespace Orbel
{
class Orbel_VST3;

class Orbel_VST3_EditorView : public Steinberg::CPluginView,
                              public Steinberg::IPlugViewContentScaleSupport,
                              public IEditorWindow
{
public:
    using ViewRect = Steinberg::ViewRect;
    using tresult = Steinberg::tresult;

    Orbel_VST3_EditorView(Orbel_VST3& adapter, IEditor& shown);
    ~Orbel_VST3_EditorView() override;

    tresult PLUGIN_API isPlatformTypeSupported(Steinberg::FIDString type) override;
    // kResultFalse, and nothing is attached, where the editor cannot open in that window or is open in
    // another view.
    tresult PLUGIN_API attached(void* parent, Steinberg::FIDString type) override;
    tresult PLUGIN_API removed() override;
    tresult PLUGIN_API setFrame(Steinberg::IPlugFrame* frameOfHost) override;

    tresult PLUGIN_API getSize(ViewRect* size) override;
    // The host's window has another size; the editor keeps its own.
    tresult PLUGIN_API onSize(ViewRect* size) override;
    // Answers the only size that there is.
    tresult PLUGIN_API checkSizeConstraint(ViewRect* size) override;
    // kResultFalse for what is no scale; it stays as it is.
    tresult PLUGIN_API setContentScaleFactor(ScaleFactor factor) override;

    // kResultTrue if the editor took it. While the view is not attached nothing is taken.
    tresult PLUGIN_API onWheel(float distance) override;
    tresult PLUGIN_API onKeyDown(Steinberg::char16 key, Steinberg::int16 keyCode,
                                 Steinberg::int16 modifiers) override;
    tresult PLUGIN_API onKeyUp(Steinberg::char16 key, Steinberg::int16 keyCode,
                               Steinberg::int16 modifiers) override;

    DEFINE_INTERFACES
    DEF_INTERFACE(Steinberg::IPlugViewContentScaleSupport)
    END_DEFINE_INTERFACES(CPluginView)
    REFCOUNT_METHODS(CPluginView)

    // IEditorWindow
    bool resize(double width, double height) override;

    // The effect is about to destroy the editor: closes it if it is open.
    void forgetEditor();
    bool isShown() const { return frame != nullptr; }

private:
    ViewRect editorSize() const;
    void joinLoop();
    void close();
    template <typename Call>
    auto inTurn(Call call);

    Steinberg::IPtr<Orbel_VST3> owner;
    IEditor* editor;          // the effect's; null once it is gone
    IEditor* frame = nullptr; // the same while it is open
    std::unique_ptr<HostRunLoop> loop;
};
}
