// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/Kept.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/platform/panels/FilePanel.h"
#include "Tovrane/platform/panels/PrivateBus.h"
#include "Tovrane/views/controls/MessagePresenter.h"
#include "Tovrane/views/tree/CFrame.h"

#include <unistd.h>

using namespace Tovra;
using testing::ElementsAre;
using testing::IsEmpty;
using Paths = std::vector<std::string>;
using Options = FileSelectorOptions;

namespace
{
// A folder that is all of PATH, and a frame.
class FilePanelTest : public PrivateBus
{
protected:
    FilePanelTest()
    {
        useMessageViews();
        HeadlessFrame::of(*frame.get())->onMessage = [this](const Message& message)
        {
            messages.push_back(message.body);
            return std::optional(1);
        };
    }
    ~FilePanelTest() override
    {
        frame->close();
        Sonvex::setMessageBoxPresenter(nullptr);
    }

    void writeProgram(const std::string& name, const std::string& script)
    {
        std::filesystem::permissions(programs.put(name, "#!/bin/sh\n" + script),
                                     std::filesystem::perms::owner_all);
    }
    void open(Options::Purpose purpose = Options::openFiles)
    {
        const TempEnvironment where("DBUS_SESSION_BUS_ADDRESS", address.c_str());
        panel = std::make_unique<FilePanel>(FilePanel::desktopWays());
        panel->open({purpose, "Title", {}, "/start", ""}, 7, frame.get(),
                    [this](const Paths& paths)
                    {
                        answers.push_back(paths);
                        panel.reset(); // it may
                    });
        EXPECT_THAT(answers, IsEmpty()) << "later";
    }
    Paths choose(Options::Purpose purpose = Options::openFiles)
    {
        open(purpose);
        EXPECT_TRUE(until([this] { return !answers.empty(); }));
        frame->idle();
        EXPECT_EQ(answers.size(), 1u);
        return std::exchange(answers, {}).at(0);
    }

    TempFolder programs;
    TempEnvironment path{"PATH", programs.path.c_str()};
    TempEnvironment desktop{"XDG_CURRENT_DESKTOP", "GNOME"};
    Kept<CFrame> frame = Kept<CFrame>::adopt(new CFrame({0, 0, 200, 100}, nullptr, nullptr));
    std::unique_ptr<FilePanel> panel;
    std::vector<Paths> answers;
    std::vector<std::string> messages;
};
}

TEST_F(FilePanelTest, TriesThePortalThenTheProgramsThenTellsWhatIsMissing)
{
    const TempEnvironment forBus("PATH", "/usr/bin:/bin");
    startPortal({"handle", "respond 0 file:///portal file:///second"});
    setenv("PATH", programs.path.c_str(), 1);
    writeProgram("zenity", "echo /zenity");
    writeProgram("kdialog", "echo /kdialog");
    EXPECT_THAT(choose(), ElementsAre("/portal", "/second"));
    EXPECT_THAT(choose(Options::saveFile), ElementsAre("/portal")) << "one was asked for";
    portal.reset();
    EXPECT_THAT(choose(), ElementsAre("/zenity"));
    unlink((programs / "zenity").c_str());
    EXPECT_THAT(choose(), ElementsAre("/kdialog"));
    writeProgram("zenity", "exit 1");
    EXPECT_THAT(choose(), IsEmpty()) << "a cancelled panel is no reason to show another one";
    EXPECT_THAT(messages, IsEmpty());
    unlink((programs / "zenity").c_str());
    unlink((programs / "kdialog").c_str());
    EXPECT_THAT(choose(), IsEmpty());
    EXPECT_THAT(messages, ElementsAre("To choose files, install the program \"zenity\" or \"kdialog\"."));
}

TEST_F(FilePanelTest, AnswersOnceHoweverItCloses)
{
    writeProgram("zenity", "exec /bin/cat /dev/zero >/dev/null");
    const auto openFor = [this](int rounds) // not yet any way, or one of them
    {
        open();
        for (int i = 0; i < rounds; ++i)
            loop.runOnce(5);
    };
    for (const int rounds : {0, 1, 3, 10, 40})
    {
        openFor(rounds);
        panel->cancel();
        EXPECT_THAT(answers, IsEmpty()) << "later";
        EXPECT_TRUE(until([this] { return !answers.empty(); }));
        EXPECT_THAT(std::exchange(answers, {}), ElementsAre(IsEmpty()));
        openFor(rounds);
        std::exchange(panel, nullptr).reset();
        EXPECT_THAT(std::exchange(answers, {}), ElementsAre(IsEmpty())) << "at once";
    }
}
