// SPDX-License-Identifier: GPL-3.0-or-later
// What lies over a frame while it asks its user for something: text fields, a panel of another program, a
// menu.
//
// Each of them holds an OverlayHandle from the moment it opens until it closes, and the frame holds the list.
// An overlay ends once, whoever is first: it closes its handle, or the list loses it because the frame, its
// window or the connection has gone. The list knows nothing else about its overlays, so each of these calls
// may destroy the overlay, open another one, or close the frame.
//
// All of it is [window thread].
#pragma once

#include "Tovrane/window/TovraKeyCode.h"

#include <string>
#include <vector>

namespace Tovra
{
class FrameOverlays;

// A later one gets the keys before an earlier one.
enum class OverlayKind
{
    field, // any number; the one that was opened or raised last gets the keys
    panel, // one at a time; meanwhile the frame gets no clicks and no keys
    menu   // the same
};

class FrameOverlay
{
public:
    // The overlay cannot go on: it ends without a result. Its handle is closed already.
    virtual void overlayLost() = 0;
    // A key of the frame's window, and the text that it types. After kKeyConsumed nobody else gets it.
    virtual long overlayKeyDown(const TovraKeyCode& code, const std::string& typed) = 0;
    // For a field: a text that an input method made, in UTF-8, not checked.
    virtual void overlayText(const std::string&) {}
    // For a field: whether it gets the keys that the user types now.
    virtual void overlayFocused(bool) {}

protected:
    ~FrameOverlay() = default;
};

// The place of one overlay in the list of its frame. An overlay has it as a member.
class OverlayHandle
{
public:
    OverlayHandle() = default;
    ~OverlayHandle() { close(); }
    OverlayHandle(const OverlayHandle&) = delete;
    OverlayHandle& operator=(const OverlayHandle&) = delete;

    // False if there may be none: the list is shut, or one of its kind is open that stands alone.
    bool open(FrameOverlays& overlays, FrameOverlay& shown, OverlayKind kind);
    // Nothing is called on the overlay from here on. Does nothing if it is not open.
    void close();
    // This field gets the keys, and the one that had them gets them back when it closes.
    void raise();
    bool isOpen() const { return list != nullptr; }

private:
    friend class FrameOverlays;
    FrameOverlays* list = nullptr; // null while closed
    FrameOverlay* overlay = nullptr;
    OverlayKind kind = OverlayKind::field;
};

class FrameOverlays
{
public:
    FrameOverlays() = default;
    ~FrameOverlays() { shut(); }
    FrameOverlays(const FrameOverlays&) = delete;
    FrameOverlays& operator=(const FrameOverlays&) = delete;

    bool has(OverlayKind kind) const { return top(kind) != nullptr; }
    // The field that gets the keys, or the panel or menu that is open; null for none.
    FrameOverlay* top(OverlayKind kind) const;
    // Whether a menu or a panel keeps clicks and keys from the frame.
    bool takeInput() const { return has(OverlayKind::panel) || has(OverlayKind::menu); }

    // Hands a key to the topmost overlay.
    long keyDown(const TovraKeyCode& code, const std::string& typed);
    // Whether the frame's window has the keyboard.
    void setFocused(bool focused);
    // Ends all overlays of that kind; whether there was any.
    bool lose(OverlayKind kind);
    // Ends all of them; none can be opened any more.
    void shut();

private:
    friend class OverlayHandle;
    bool add(OverlayHandle& handle);
    void insert(OverlayHandle& handle);
    void remove(OverlayHandle& handle);
    OverlayHandle* topHandle(OverlayKind kind) const;
    void tellField(bool focused) const;

    std::vector<OverlayHandle*> handles; // fields first, then the panel, then the menu
    bool isFocused = true;
    bool isShut = false;
};
}
