// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/shot/ShotAnswers.h"

#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/views/controls/CMessageView.h"
#include "Tovrane/views/tree/CFrame.h"
#include "tools/common/Text.h"
#include "tools/common/ToolError.h"

#include <utility>

namespace lodex
{
namespace
{
template <typename T>
T takeFirst(std::deque<T>& queue)
{
    if (queue.empty())
        return T();
    T first = std::move(queue.front());
    queue.pop_front();
    return first;
}

// The row of a title, rather one that fits the place on the path; -1 for none.
long findRow(Tovra::IMenu& menu, const std::string& title, bool isLast)
{
    long found = -1;
    for (long row = 0; row < menu.getNbEntries(); ++row)
    {
        const Tovra::CMenuItem& item = *menu.getEntry(row);
        if (item.isSeparator() || item.getTitle() != title)
            continue;
        if (isLast ? Tovra::isChoosable(menu, row) : item.getSubmenu() != nullptr)
            return row;
        if (found < 0)
            found = row;
    }
    return found;
}

std::string titlesOf(const Tovra::IMenu& menu)
{
    std::string all;
    for (long row = 0; row < menu.getNbEntries(); ++row)
        if (!menu.getEntry(row)->isSeparator())
            all += (all.empty() ? "" : ", ") + inQuotes(menu.getEntry(row)->getTitle());
    return all;
}
}

ShotAnswers::ShotAnswers(Tovra::HeadlessFrame& answered, ShotRecord& written)
    : window(&answered), record(written)
{
    window->onMenu = [this](Tovra::IMenu& menu)
    {
        record.add(menu);
        return chooseFrom(menu);
    };
    window->onFileSelector = [this](const Tovra::FileSelectorOptions&)
    {
        const std::string path = takeFirst(files);
        return path.empty() ? std::vector<std::string>() : std::vector<std::string>{path};
    };
}

ShotAnswers::~ShotAnswers()
{
    window->onMenu = nullptr;
    window->onFileSelector = nullptr;
}

// A row that is there but cannot be chosen is a click that does nothing.
Tovra::MenuChoice ShotAnswers::chooseFrom(Tovra::IMenu& menu)
{
    const ShotTitles titles = takeFirst(choices);
    Tovra::MenuChoice choice{&menu, -1};
    for (size_t i = 0; i < titles.size(); ++i)
    {
        const bool isLast = i + 1 == titles.size();
        choice.index = findRow(*choice.menu, titles[i], isLast);
        const Tovra::CMenuItem* const item = choice.menu->getEntry(choice.index);
        if (item == nullptr || (!isLast && item->getSubmenu() == nullptr))
        {
            problem = "the menu has no " + std::string(isLast ? "row " : "submenu ") + inQuotes(titles[i]) +
                      "; there are " + titlesOf(*choice.menu);
            return {};
        }
        if (!isLast)
            choice.menu = item->getSubmenu();
    }
    return choice;
}

bool ShotAnswers::answerMessage()
{
    Tovra::CFrame* const frame = window->events().getFrame();
    const Tovra::Kept<Tovra::CMessageView> view(
        frame != nullptr ? dynamic_cast<Tovra::CMessageView*>(frame->getModalView()) : nullptr);
    if (!view)
        return false;
    const Tovra::Message message = view->getMessage();
    record.add(message);
    view->answer(message.type == Sonvex::kMessageBoxOk || takeFirst(yesses) ? 1 : 0);
    return true;
}

void ShotAnswers::giveAll()
{
    constexpr int most = 100; // a window that asks again and again is left to the next step
    for (int i = 0; i < most; ++i)
    {
        window->answerMenus();
        window->answerPanels();
        if (const Tovra::Kept<Tovra::CFrame> frame(window->events().getFrame()); frame)
            frame->doTasks();
        if (!answerMessage())
            break;
    }
    if (const std::string said = std::exchange(problem, std::string()); !said.empty())
        throw ToolError(said);
}
}
