// SPDX-License-Identifier: GPL-3.0-or-later
// Shows message boxes in the window itself, each as a CMessageView over its frame.
//
// A box waits for the frame's next idle, whichever thread it comes from, so that it never opens in the midst
// of an event or of drawing, and there for the modal view that is open. Boxes of one frame come one after the
// other, in the order in which they were opened.
#pragma once

#include "Sonvex/MessageBox.h"
#include "Tovrane/views/controls/CMessageView.h"

#include <functional>
#include <optional>

namespace Tovra
{
class MessagePresenter final : public Sonvex::IMessageBoxPresenter
{
public:
    void open(CFrame* frame, Sonvex::MessageBoxType type, const std::string& title, const std::string& body,
              Sonvex::MessageBoxDone done) override;
    bool isWindowThread() const override;

    // [window thread]  Is asked before a message is shown: with an answer the message is not shown. A
    // platform without a user sets it, once for the process.
    using Answerer = std::optional<int> (*)(CFrame& frame, const Message& message);
    static void setAnswerer(Answerer answerer);
};

// [window thread]  From here on Sonvex::MessageBoxModal and openMessageBox show their boxes in frames.
void useMessageViews();
}
