// SPDX-License-Identifier: GPL-3.0-or-later
// What a script has brought to light: what the window asked its user and said, for programs to read.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace Tovra
{
class IMenu;
struct Message;
}

namespace lodex
{
struct ShotRecord
{
    // Of each menu the titles of its rows: "-" for a separator, with "* " before a checked and "~ " before a
    // disabled one ("~ * " for both). The rows of a submenu follow the row that opens it.
    std::vector<std::vector<std::string>> menus;
    // "Title\nBody"
    std::vector<std::string> questions;
    std::vector<std::string> messages;

    // As the last step has left them, before a gesture that is still open then is ended.
    std::string readOut;
    int cursor = 0; // a CCursorType

    void add(const Tovra::IMenu& menu);
    void add(const Tovra::Message& message);
};

// {"readout": "...", "cursor": N, "menus": [[...]...], "questions": [...], "messages": [...]}, to which the
// owner adds what is its own. Invalid UTF-8 is replaced.
nlohmann::ordered_json toJson(const ShotRecord& record);
}
