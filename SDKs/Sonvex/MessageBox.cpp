// SPDX-License-Identifier: GPL-3.0-or-later
#include "Sonvex/MessageBox.h"

#include "CORE/Format.h"
#include "CORE/Utf8.h"
#include "Sonvex/AnswerOnce.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>

namespace Sonvex
{
namespace
{
constexpr size_t longestBody = 431; // bytes

std::atomic<IMessageBoxPresenter*> presenter{nullptr}; // written at start and end, read by any thread

// An answer on its way from the window thread to a worker that waits for it.
class AwaitedAnswer
{
public:
    void give(int given)
    {
        const std::lock_guard guard(lock);
        answer = given;
        arrived.notify_one();
    }
    int wait()
    {
        std::unique_lock guard(lock);
        arrived.wait(guard, [this] { return answer.has_value(); });
        return *answer;
    }

private:
    std::mutex lock;
    std::condition_variable arrived;
    std::optional<int> answer;
};

int show(Tovra::CFrame* frame, MessageBoxType type, const char* title, const std::string& body)
{
    IMessageBoxPresenter* const by = presenter.load();
    const bool mustNotWait = by != nullptr && by->isWindowThread();
    if (by == nullptr || (mustNotWait && type != kMessageBoxOk))
        return 0;
    const auto awaited = std::make_shared<AwaitedAnswer>();
    openMessageBox(frame, type, title, body, [awaited](int given) { awaited->give(given); });
    return mustNotWait ? 0 : awaited->wait();
}
}

void setMessageBoxPresenter(IMessageBoxPresenter* newPresenter)
{
    presenter = newPresenter;
}

void openMessageBox(Tovra::CFrame* frame, MessageBoxType type, const char* title, const std::string& body,
                    MessageBoxDone done)
{
    const auto answer = std::make_shared<AnswerOnce<int>>(std::move(done), 0);
    if (IMessageBoxPresenter* const by = presenter.load())
        by->open(frame, type, title ? title : "", std::string(Core::Utf8::cut(body, longestBody)),
                 [answer](int given) { answer->give(given); });
}

int MessageBoxModal(Tovra::CFrame* frame, MessageBoxType type, const char* title, const char* body)
{
    return show(frame, type, title, body ? body : "");
}

int showFormattedMessageBox(Tovra::CFrame* frame, MessageBoxType type, const char* title, const char* format,
                            va_list arguments)
{
    return show(frame, type, title, Core::formatBounded(longestBody, format, arguments));
}

std::string formatMessage(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string body = Core::formatBounded(longestBody, format, arguments);
    va_end(arguments);
    return body;
}
}
