// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/shell/IdleList.h"

#include "Tovrane/shell/CTovraneEditor.h"

namespace Orbel
{
IdleList& idleList()
{
    static IdleList list;
    return list;
}

void IdleList::add(Tovra::CTovraneEditor& editor)
{
    remove(editor);
    items.push_back(std::make_unique<idleListItem>());
    items.back()->editor = &editor;
    items.back()->timer.start(interval, [&editor] { editor.idle(); });
}

void IdleList::remove(const Tovra::CTovraneEditor& editor)
{
    std::erase_if(items, [&editor](const auto& item) { return item->editor == &editor; });
}
}
