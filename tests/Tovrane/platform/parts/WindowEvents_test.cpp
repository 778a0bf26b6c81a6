// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/WindowEvents.h"
#include "Tovrane/views/tree/RecordingView.h"

using namespace Tovra;
using testing::ElementsAre;

namespace
{
class PairedEvents : public HeadlessTest
{
protected:
    PairedEvents()
    {
        view = add("view", {0, 0, 100, 100});
        view->answers = {{"down", kMouseHandled}, {"move", kMouseHandled}};
    }

    // What the view hears of steps like "press 2" or "move 16", each at a place of its own: (1, 1), (2, 2)
    // ... The other steps are "release", "lost", "leave", "vanish" and "close".
    Log after(const std::vector<std::string>& steps)
    {
        log.clear();
        double at = 0.0;
        for (const std::string& step : steps)
        {
            ++at;
            take(step.substr(0, step.find(' ')), {at, at},
                 std::atol(step.substr(step.find(' ') + 1).c_str()));
        }
        return taken(log);
    }

    void take(const std::string& word, CPoint at, long buttons)
    {
        if (word == "press")
            user().press(at, buttons);
        else if (word == "release")
            user().release(at, buttons);
        else if (word == "move")
            user().move(at, buttons);
        else if (word == "lost")
            user().releaseAll();
        else if (word == "leave")
            user().leave(at, buttons);
        else if (word == "vanish")
            user().vanish();
        else
            close();
    }

    RecordingView* view = nullptr;
};
}

TEST_F(PairedEvents, EveryPressIsReleasedOnce)
{
    const struct
    {
        const char* what;
        std::vector<std::string> steps;
        Log heard;
    } cases[] = {
        {"a release without a press",
         {"release 2", "press 2", "release 2", "release 2"},
         {"view down 2,2 2", "view up 3,3 2"}},
        {"a press without a release",
         {"press 2", "press 2", "release 2"},
         {"view down 1,1 2", "view up 2,2 2", "view down 2,2 2", "view up 3,3 2"}},
        {"another button's release",
         {"press 2", "release 8", "release 2"},
         {"view down 1,1 2", "view up 3,3 2"}},
        {"a move without the button",
         {"press 2", "move 16"},
         {"view down 1,1 2", "view up 2,2 18", "view move 2,2 16", "view enter 2,2 16"}},
        {"a move with one of two buttons",
         {"press 18", "press 8", "move 8", "lost"},
         {"view down 1,1 18", "view down 2,2 8", "view up 3,3 2", "view move 3,3 8", "view enter 3,3 8"}},
        {"hidden in the middle of a drag",
         {"press 2", "move 2", "vanish", "release 2", "leave 0"},
         {"view down 1,1 2", "view move 2,2 2", "view enter 2,2 2", "view up 2,2 2", "view exit 2,2 0"}},
        {"left without being hidden",
         {"move 0", "leave 16", "vanish"},
         {"view move 1,1 0", "view enter 1,1 0", "view exit 2,2 16"}},
    };
    for (const auto& one : cases)
    {
        after({"vanish"});
        EXPECT_EQ(after(one.steps), one.heard) << one.what;
    }
}

// The release comes, or the button is found not to be held, while a menu is open in the press.
TEST_F(PairedEvents, AReleaseWaitsForItsPress)
{
    for (const std::string inside : {"release 2", "lost", "move 0", "vanish"})
    {
        view->reaction = [&](const std::string& word)
        {
            if (word == "down")
                take(inside.substr(0, inside.find(' ')), {7, 8}, inside == "release 2" ? 2 : 0);
        };
        const Log heard = after({"press 2", "release 2"});
        EXPECT_EQ(std::count_if(heard.begin(), heard.end(),
                                [](const std::string& entry) { return entry.starts_with("view up"); }),
                  1)
            << inside;
        EXPECT_EQ(heard.back(),
                  inside == "release 2" || inside == "move 0" ? "view up 7,8 2" : "view up 1,1 2");
    }
}

TEST_F(PairedEvents, ClosingReleasesWhatIsHeld)
{
    EXPECT_THAT(
        after({"press 8", "move 8", "close"}),
        ElementsAre("view down 1,1 8", "view move 2,2 8", "view enter 2,2 8", "view up 2,2 8", "view gone"));
    frame = Kept<CFrame>::adopt(new CFrame(CRect(0.0, 0.0, 200.0, 100.0), nullptr, nullptr));
    view = add("view", {0, 0, 100, 100});
    view->reaction = [this](const std::string& word)
    {
        if (word == "down")
            close();
    };
    EXPECT_THAT(after({"press 8"}), ElementsAre("view down 1,1 8", "view gone"));
}
