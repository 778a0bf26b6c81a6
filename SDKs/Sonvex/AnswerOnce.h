// SPDX-License-Identifier: GPL-3.0-or-later
// Passes one answer on to a callback, whatever happens: the first answer given, or, when it is destroyed
// without one, the answer that stands for "nobody answered".
//
// Whoever asks a user something that is answered later holds one of these, so that each way out (closed,
// cancelled, lost) ends in exactly one call.
#pragma once

#include <functional>
#include <utility>

namespace Sonvex
{
// One thread at a time.
template <typename Answer>
class AnswerOnce
{
public:
    using Done = std::function<void(Answer)>;

    // An empty callback is not called.
    AnswerOnce(Done callback, Answer withoutAnswer)
        : done(std::move(callback)), ifNobodyAnswers(std::move(withoutAnswer))
    {
    }
    ~AnswerOnce() { give(std::move(ifNobodyAnswers)); }
    AnswerOnce(const AnswerOnce&) = delete;
    AnswerOnce& operator=(const AnswerOnce&) = delete;

    // Every call but the first does nothing. The callback may destroy this object.
    void give(Answer answer)
    {
        if (const Done call = std::exchange(done, nullptr))
            call(std::move(answer));
    }
    bool isGiven() const { return !done; }

private:
    Done done;
    Answer ifNobodyAnswers;
};
}
