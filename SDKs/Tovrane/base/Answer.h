// SPDX-License-Identifier: GPL-3.0-or-later
// Waits for an answer that comes later, such as a menu's, in a loop that the caller owns.
//
// For tools and tests. Code that may run inside a host never waits: the host's own loop would stand still.
#pragma once

#include "Tovrane/base/PollRunLoop.h"

#include <functional>
#include <memory>
#include <optional>

namespace Tovra
{
// [window thread]  Calls ask with a callback and runs the loop until that is called. The default value if the
// loop was stopped, or has nothing left to do, before that.
//
//     const auto choice = waitForAnswer<MenuChoice>(loop, [&](auto done) { popUp->openMenu(menu, done); });
template <typename Answer>
Answer waitForAnswer(PollRunLoop& loop, const std::function<void(std::function<void(Answer)>)>& ask)
{
    const auto answer = std::make_shared<std::optional<Answer>>(); // the callback may come later still
    ask([answer](Answer given) { *answer = std::move(given); });
    loop.runUntil([&] { return answer->has_value(); });
    return answer->value_or(Answer());
}
}
