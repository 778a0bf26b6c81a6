// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/shot/ShotRecord.h"

#include "CORE/Utf8.h"
#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/views/controls/CMessageView.h"
#include "Tovrane/window/IMenu.h"

namespace lodex
{
namespace
{
using Texts = std::vector<std::string>;

std::string shownRow(const Tovra::CMenuItem& item)
{
    if (item.isSeparator())
        return "-";
    const char* const off = item.isEnabled() ? "" : "~ ";
    const char* const mark = item.isChecked() ? "* " : "";
    return off + (mark + item.getTitle());
}

void addRows(Texts& rows, const Tovra::IMenu& menu)
{
    for (long i = 0; i < menu.getNbEntries(); ++i)
    {
        const Tovra::CMenuItem& item = *menu.getEntry(i);
        rows.push_back(shownRow(item));
        if (item.getSubmenu() != nullptr)
            addRows(rows, *item.getSubmenu());
    }
}

Texts valid(const Texts& texts)
{
    Texts result;
    for (const std::string& text : texts)
        result.push_back(Core::Utf8::replaceInvalid(text));
    return result;
}
}

void ShotRecord::add(const Tovra::IMenu& menu)
{
    addRows(menus.emplace_back(), menu);
}

void ShotRecord::add(const Tovra::Message& message)
{
    const std::string text = message.title.empty() ? message.body : message.title + '\n' + message.body;
    (message.type == Sonvex::kMessageBoxOk ? messages : questions).push_back(text);
}

nlohmann::ordered_json toJson(const ShotRecord& record)
{
    nlohmann::ordered_json json;
    json["readout"] = Core::Utf8::replaceInvalid(record.readOut);
    json["cursor"] = record.cursor;
    json["menus"] = nlohmann::ordered_json::array();
    for (const Texts& rows : record.menus)
        json["menus"].push_back(valid(rows));
    json["questions"] = valid(record.questions);
    json["messages"] = valid(record.messages);
    return json;
}
}
