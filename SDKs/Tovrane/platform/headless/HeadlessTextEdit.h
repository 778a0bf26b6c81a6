// SPDX-License-Identifier: GPL-3.0-or-later
// The text field of a headless frame: a text, and a user who types it.
#pragma once

#include "Tovrane/base/CRect.h"
#include "Tovrane/base/Kept.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/window/IOSTextEdit.h"

#include <string>

namespace Tovra
{
class ITextEditCallback;

class HeadlessTextEdit : public IOSTextEdit, public FrameOverlay
{
public:
    HeadlessTextEdit(HeadlessFrame& on, ITextEditCallback& callback);

    const char* getText() override { return text.c_str(); }
    bool setText(const char* next) override;
    bool updateSize() override;

    // What a user does. Each may destroy the field. Typing replaces the selection, which is the whole text
    // once setText was called, or else goes to the end.
    void type(const char* typed);
    void pressReturn();
    void pressEscape();

    bool isAllSelected() const { return allSelected; }
    // In world coordinates, cut to what is visible.
    const CRect& place() const { return visible; }

    void overlayLost() override {}
    long overlayKeyDown(const TovraKeyCode&, const std::string&) override { return kKeyNotHandled; }

private:
    bool isTakenByView(const TovraKeyCode& code);

    const Kept<HeadlessFrame> frame;
    ITextEditCallback& callback;
    std::string text;
    bool allSelected = false;
    CRect visible;
    OverlayHandle handle;
};
}
