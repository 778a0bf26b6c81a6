// SPDX-License-Identifier: GPL-3.0-or-later
// The text field of a headless frame: a text, and a user who types it.
#pragma once

#include "Tovrane/base/CRect.h"
#include "Tovrane/base/Kept.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/platform/parts/EditLinePainter.h"
#include "Tovrane/window/IOSTextEdit.h"

#include <memory>
#include <string>

namespace Tovra
{
class ITextEditCallback;

class HeadlessTextEdit : public IOSTextEdit, public FrameOverlay
{
public:
    HeadlessTextEdit(HeadlessFrame& on, ITextEditCallback& callback);

    const char* getText() override { return line.text().c_str(); }
    bool setText(const char* next) override;
    bool updateSize() override;
    long onKeyDown(TovraKeyCode& code) override;

    // What a user does. Each may destroy the field. Typing replaces the selection, which is the whole text
    // once setText was called. Single keys come through HeadlessFrame::keyDown.
    void type(const char* typed);
    void pressReturn();
    void pressEscape();

    // As a window would show it, into a picture of the frame.
    void drawOver(IOSBitmap& picture);
    // In world coordinates, cut to what is visible.
    const CRect& place() const { return visible; }

    void overlayLost() override {}
    long overlayKeyDown(const TovraKeyCode& code, const std::string& typed) override;

private:
    const Kept<HeadlessFrame> frame;
    ITextEditCallback& callback;
    EditLine line{std::size_t(textSize - 1)};
    EditLinePainter painter;
    CRect visible;
    OverlayHandle handle;
    std::shared_ptr<bool> life = std::make_shared<bool>(); // expires with the field
};
}
