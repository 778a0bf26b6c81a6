// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/Wrapper/VST3/Orbel_VST3_EditorView.h"

#include "CORE/ThreadCheck.h"
#include "CORE/Truncate.h"
#include "Orbel/Wrapper/VST3/Orbel_VST3.h"
#include "Orbel/contract/IEditor.h"

#include <algorithm>
#include <cstring>

namespace Orbel
{
using namespace Steinberg;

// The kinds of parent window that the editor's platform has.
#if defined(__APPLE__)
static const FIDString platformTypes[] = {kPlatformTypeNSView};
#else
static const FIDString platformTypes[] = {kPlatformTypeX11EmbedWindowID};
#endif

Orbel_VST3_EditorView::Orbel_VST3_EditorView(Orbel_VST3& adapter, IEditor& shown)
    : owner(&adapter), editor(&shown)
{
    double width = 0.0, height = 0.0;
    editor->getSize(width, height);
    rect = ViewRect(0, 0, Core::truncate<int32>(width), Core::truncate<int32>(height));
}

Orbel_VST3_EditorView::~Orbel_VST3_EditorView()
{
    close();
    owner->forgetView(this);
}

void Orbel_VST3_EditorView::close()
{
    if (frame)
        frame->close();
    frame = nullptr;
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
    if (!editor || owner->isEditorOpen() || isPlatformTypeSupported(type) != kResultTrue ||
        !editor->open(parent, type))
        return kResultFalse;
    frame = editor;
    return CPluginView::attached(parent, type);
}

tresult PLUGIN_API Orbel_VST3_EditorView::removed()
{
    Core::checkWindowThread("IPlugView::removed");
    close();
    return CPluginView::removed();
}

tresult PLUGIN_API Orbel_VST3_EditorView::onWheel(float distance)
{
    return frame && frame->onWheel(distance) ? kResultTrue : kResultFalse;
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
    return frame && frame->onKeyDown(keyOf(key, keyCode, modifiers)) ? kResultTrue : kResultFalse;
}

tresult PLUGIN_API Orbel_VST3_EditorView::onKeyUp(char16 key, int16 keyCode, int16 modifiers)
{
    return frame && frame->onKeyUp(keyOf(key, keyCode, modifiers)) ? kResultTrue : kResultFalse;
}
}
