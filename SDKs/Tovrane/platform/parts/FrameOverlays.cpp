// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/FrameOverlays.h"

#include <algorithm>

namespace Tovra
{
bool OverlayHandle::open(FrameOverlays& overlays, FrameOverlay& shown, OverlayKind newKind)
{
    close();
    overlay = &shown;
    kind = newKind;
    return overlays.add(*this);
}

void OverlayHandle::close()
{
    if (FrameOverlays* const from = list)
        from->remove(*this);
}

void OverlayHandle::raise()
{
    if (list == nullptr || list->topHandle(kind) == this)
        return;
    FrameOverlays& in = *list;
    in.tellField(false);
    std::erase(in.handles, this);
    in.insert(*this);
    in.tellField(in.isFocused);
}

bool FrameOverlays::add(OverlayHandle& handle)
{
    if (isShut || (handle.kind != OverlayKind::field && has(handle.kind)))
        return false;
    if (handle.kind == OverlayKind::field)
        tellField(false);
    handle.list = this;
    insert(handle);
    if (handle.kind == OverlayKind::field)
        tellField(isFocused);
    return true;
}

// On top of those of its kind.
void FrameOverlays::insert(OverlayHandle& handle)
{
    const auto above = std::find_if(handles.begin(), handles.end(),
                                    [&](const OverlayHandle* other) { return other->kind > handle.kind; });
    handles.insert(above, &handle);
}

void FrameOverlays::remove(OverlayHandle& handle)
{
    const bool hadKeys = topHandle(OverlayKind::field) == &handle;
    std::erase(handles, &handle);
    handle.list = nullptr;
    if (hadKeys && !isShut)
        tellField(isFocused);
}

OverlayHandle* FrameOverlays::topHandle(OverlayKind kind) const
{
    const auto found = std::find_if(handles.rbegin(), handles.rend(),
                                    [&](const OverlayHandle* handle) { return handle->kind == kind; });
    return found != handles.rend() ? *found : nullptr;
}

FrameOverlay* FrameOverlays::top(OverlayKind kind) const
{
    const OverlayHandle* const handle = topHandle(kind);
    return handle != nullptr ? handle->overlay : nullptr;
}

void FrameOverlays::tellField(bool focused) const
{
    if (FrameOverlay* const active = top(OverlayKind::field))
        active->overlayFocused(focused);
}

long FrameOverlays::keyDown(const TovraKeyCode& code, const std::string& typed)
{
    return handles.empty() ? kKeyNotHandled : handles.back()->overlay->overlayKeyDown(code, typed);
}

void FrameOverlays::setFocused(bool focused)
{
    isFocused = focused;
    tellField(focused);
}

bool FrameOverlays::lose(OverlayKind kind)
{
    bool hadAny = false;
    for (OverlayHandle* handle; (handle = topHandle(kind)) != nullptr; hadAny = true)
    {
        FrameOverlay& lost = *handle->overlay;
        handle->close();
        lost.overlayLost();
    }
    return hadAny;
}

void FrameOverlays::shut()
{
    isShut = true;
    for (const auto kind : {OverlayKind::menu, OverlayKind::panel, OverlayKind::field})
        lose(kind);
}
}
