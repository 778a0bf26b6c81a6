// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/Wrapper/VST3/Orbel_VST3_EditorView.h"

#include "CORE/ThreadCheck.h"
#include "CORE/Truncate.h"
#include "Orbel/Wrapper/VST3/Orbel_VST3.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <utility>

namespace Orbel
{
using namespace Steinberg;

// The kinds of parent window that the editor's platform has.
#if defined(__APPLE__)
static const FIDString platformTypes[] = {kPlatformTypeNSView};
#else
static const FIDString platformTypes[] = {kPlatformTypeX11EmbedWindowID};
#endif

// rect is the size that the host knows.
Orbel_VST3_EditorView::Orbel_VST3_EditorView(Orbel_VST3& adapter, IEditor& shown)
    : owner(&adapter), editor(&shown)
{
    rect = editorSize();
}

Orbel_VST3_EditorView::~Orbel_VST3_EditorView()
{
    close();
    owner->forgetView(this);
}

// Calls with the host's loop as the current one. The call may end with this view removed.
template <typename Call>
auto Orbel_VST3_EditorView::inTurn(Call call)
{
    std::optional<Tovra::RunLoop::Turn> turn;
    if (loop)
        turn.emplace(*loop);
    return call();
}

void Orbel_VST3_EditorView::joinLoop()
{
    if (loop)
        return;
    IPtr<Linux::IRunLoop> ofHost = HostRunLoop::find(plugFrame);
    if (!ofHost)
        ofHost = HostRunLoop::find(owner->getHostContext());
    if (ofHost)
        loop = std::make_unique<HostRunLoop>(ofHost);
}

void Orbel_VST3_EditorView::close()
{
    if (IEditor* const shown = std::exchange(frame, nullptr))
    {
        inTurn([shown] { shown->close(); });
        shown->setWindow(nullptr);
    }
    loop.reset();
}

void Orbel_VST3_EditorView::forgetEditor()
{
    close();
    editor = nullptr;
}

tresult PLUGIN_API Orbel_VST3_EditorView::isPlatformTypeSupported(FIDString type)
{
    const auto isIt = [type](FIDString each) { return type && std::strcmp(each, type) == 0; };
    const bool supported = std::any_of(std::begin(platformTypes), std::end(platformTypes), isIt);
    return supported ? kResultTrue : kResultFalse;
}

tresult PLUGIN_API Orbel_VST3_EditorView::attached(void* parent, FIDString type)
{
    Core::checkWindowThread("IPlugView::attached");
    if (!editor || owner->isEditorOpen() || isPlatformTypeSupported(type) != kResultTrue)
        return kResultFalse;
    joinLoop();
    editor->setWindow(this);
    if (!inTurn([&] { return editor->open(parent, type); }))
    {
        editor->setWindow(nullptr);
        loop.reset();
        return kResultFalse;
    }
    frame = editor;
    const tresult result = CPluginView::attached(parent, type);
    const ViewRect size = editorSize(); // the window may stand on a screen with another scale
    resize(size.getWidth(), size.getHeight());
    return result;
}

tresult PLUGIN_API Orbel_VST3_EditorView::removed()
{
    Core::checkWindowThread("IPlugView::removed");
    close();
    return CPluginView::removed();
}

tresult PLUGIN_API Orbel_VST3_EditorView::setFrame(IPlugFrame* frameOfHost)
{
    const tresult result = CPluginView::setFrame(frameOfHost);
    if (frame)
        joinLoop();
    return result;
}

// The size

ViewRect Orbel_VST3_EditorView::editorSize() const
{
    if (!editor)
        return rect;
    double width = 0.0, height = 0.0;
    editor->getSize(width, height);
    return {0, 0, Core::truncate<int32>(width), Core::truncate<int32>(height)};
}

tresult PLUGIN_API Orbel_VST3_EditorView::getSize(ViewRect* size)
{
    if (!size)
        return kInvalidArgument;
    *size = rect = editorSize();
    return kResultTrue;
}

tresult PLUGIN_API Orbel_VST3_EditorView::onSize(ViewRect* size)
{
    if (!size)
        return kInvalidArgument;
    rect = *size;
    return kResultTrue;
}

tresult PLUGIN_API Orbel_VST3_EditorView::checkSizeConstraint(ViewRect* size)
{
    if (!size)
        return kInvalidArgument;
    const ViewRect only = editorSize();
    size->right = size->left + only.getWidth();
    size->bottom = size->top + only.getHeight();
    return kResultTrue;
}

// A host that does not answer with onSize has heard of it all the same.
bool Orbel_VST3_EditorView::resize(double width, double height)
{
    ViewRect wanted(0, 0, Core::truncate<int32>(width), Core::truncate<int32>(height));
    const bool isKnown = wanted.getWidth() == rect.getWidth() && wanted.getHeight() == rect.getHeight();
    if (!frame || isKnown)
        return true;
    if (!plugFrame || plugFrame->resizeView(this, &wanted) != kResultTrue)
        return false;
    rect = wanted;
    return true;
}

tresult PLUGIN_API Orbel_VST3_EditorView::setContentScaleFactor(ScaleFactor factor)
{
    Core::checkWindowThread("IPlugViewContentScaleSupport::setContentScaleFactor");
    if (!editor || !std::isfinite(factor) || factor <= 0.0f)
        return kResultFalse;
    inTurn([&] { editor->setContentScale(double(factor)); });
    return kResultTrue;
}

// Input

tresult PLUGIN_API Orbel_VST3_EditorView::onWheel(float distance)
{
    const bool taken = frame && inTurn([&] { return frame->onWheel(distance); });
    return taken ? kResultTrue : kResultFalse;
}

// Keys that print come as key, all others as keyCode, whose numbers from 128 on are ASCII codes plus 80.
static Core::KeyCode keyOf(char16 key, int16 keyCode, int16 modifiers)
{
    constexpr int16 firstShifted = 128, shift = 80;
    constexpr char16 firstBeyondASCII = 128;
    Core::KeyCode result;
    result.virtualKey = std::uint8_t(keyCode);
    if (key == 0 && keyCode >= firstShifted)
        key = char16(keyCode - shift);
    if (key < firstBeyondASCII)
        result.character = key;
    const int swapped = (modifiers & 4) << 1 | (modifiers & 8) >> 1; // command and control
    result.modifiers = std::uint8_t((modifiers & 3) | swapped);
    return result;
}

tresult PLUGIN_API Orbel_VST3_EditorView::onKeyDown(char16 key, int16 keyCode, int16 modifiers)
{
    const Core::KeyCode code = keyOf(key, keyCode, modifiers);
    const bool taken = frame && inTurn([&] { return frame->onKeyDown(code); });
    return taken ? kResultTrue : kResultFalse;
}

tresult PLUGIN_API Orbel_VST3_EditorView::onKeyUp(char16 key, int16 keyCode, int16 modifiers)
{
    const Core::KeyCode code = keyOf(key, keyCode, modifiers);
    const bool taken = frame && inTurn([&] { return frame->onKeyUp(code); });
    return taken ? kResultTrue : kResultFalse;
}
}
