// SPDX-License-Identifier: GPL-3.0-or-later
// The editors that are open. Each is idled 40 times a second by the run loop that was current when it was
// opened, which is that of its own host, so that windows are painted in hosts that never idle their editors.
// [window thread]
#pragma once

#include "Tovrane/base/RunLoop.h"

#include <memory>
#include <vector>

namespace Tovra
{
class CTovraneEditor;
}

namespace Orbel
{
class IdleList
{
public:
    static constexpr int interval = 25; // milliseconds

    // An editor may remove itself, and any other one, while it is idled. Adding it again moves it to the
    // current loop.
    void add(Tovra::CTovraneEditor& editor);
    void remove(const Tovra::CTovraneEditor& editor);

private:
    struct idleListItem
    {
        Tovra::CTovraneEditor* editor;
        Tovra::RepeatingTimer timer;
    };

    std::vector<std::unique_ptr<idleListItem>> items;
};

// Of the process.
IdleList& idleList();
}
