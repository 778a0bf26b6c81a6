// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/MessagePresenter.h"

#include "Tovrane/views/tree/CFrame.h"

namespace Tovra
{
static MessagePresenter::Answerer answerer = nullptr;

// False while it has to wait.
static bool tryOpen(CFrame& frame, const Message& message, const Sonvex::MessageBoxDone& done)
{
    if (frame.getModalView() != nullptr)
        return false;
    const auto given = answerer != nullptr ? answerer(frame, message) : std::nullopt;
    if (given)
    {
        done(*given);
        return true;
    }
    return CMessageView::open(frame, message, done);
}

void MessagePresenter::open(CFrame* frame, Sonvex::MessageBoxType type, const std::string& title,
                            const std::string& body, Sonvex::MessageBoxDone done)
{
    FrameTasks::post(frame, [message = Message{type, title, body}, done = std::move(done)](CFrame& on)
                     { return tryOpen(on, message, done); });
}

bool MessagePresenter::isWindowThread() const
{
    return FrameTasks::isWindowThread();
}

void MessagePresenter::setAnswerer(Answerer newAnswerer)
{
    answerer = newAnswerer;
}

void useMessageViews()
{
    static MessagePresenter presenter;
    Sonvex::setMessageBoxPresenter(&presenter);
}
}
