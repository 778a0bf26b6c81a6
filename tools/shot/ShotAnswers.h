// SPDX-License-Identifier: GPL-3.0-or-later
// What a script answers to the menus, questions and file panels of its window, in the order of its lines.
//
// Each kind waits in a queue of its own. What no line answers is closed: nothing chosen, no file, "No". A
// message is closed by its button.
#pragma once

#include "Tovrane/base/Kept.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "tools/shot/ShotRecord.h"

#include <deque>
#include <string>
#include <vector>

namespace lodex
{
using ShotTitles = std::vector<std::string>;

// [window thread]
class ShotAnswers
{
public:
    // Answers for the window from here on, and records what it asks. The record outlives this object.
    ShotAnswers(Tovra::HeadlessFrame& window, ShotRecord& record);
    ~ShotAnswers();
    ShotAnswers(const ShotAnswers&) = delete;
    ShotAnswers& operator=(const ShotAnswers&) = delete;

    // Answers to come; without titles or path it is closed.
    void choose(const ShotTitles& titles) { choices.push_back(titles); }
    void answer(bool isYes) { yesses.push_back(isYes); }
    void takeFile(const std::string& path) { files.push_back(path); }

    // Answers what is open, and what opens meanwhile. Throws a ToolError if a menu had no row as chosen: that
    // cannot be thrown where the menu is answered, which is within the window's own calls.
    void giveAll();

private:
    Tovra::MenuChoice chooseFrom(Tovra::IMenu& menu);
    bool answerMessage();

    const Tovra::Kept<Tovra::HeadlessFrame> window;
    ShotRecord& record;
    std::deque<ShotTitles> choices;
    std::deque<bool> yesses;
    std::deque<std::string> files;
    std::string problem; // of a choice; empty for none
};
}
