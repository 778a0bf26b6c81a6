// SPDX-License-Identifier: GPL-3.0-or-later
#include "Sonvex/MessageBox.h"
#include "Tovrane/views/controls/MessagePresenter.h"
#include "Tovrane/window/IFileSelector.h"
#include "windows/WindowTest.h"

#include <csignal>
#include <filesystem>
#include <fstream>

using namespace Tovra;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
// A folder that is all of PATH, and holds the panel's program if a test writes one.
class X11FileSelectorTest : public WindowTest
{
protected:
    X11FileSelectorTest()
    {
        openFrame();
        char name[] = "/tmp/lodex_panel_XXXXXX";
        folder = mkdtemp(name);
        setenv("PATH", folder.c_str(), 1);
        setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nobody/listens/here", 1);
        useMessageViews();
    }
    ~X11FileSelectorTest() override
    {
        closeFrame(); // which answers what is open
        Sonvex::setMessageBoxPresenter(nullptr);
        setenv("PATH", before.c_str(), 1);
        std::filesystem::remove_all(folder);
    }

    void writeProgram(const std::string& script)
    {
        const std::filesystem::path file = folder / "zenity";
        std::ofstream(file) << "#!/bin/sh\n" << script;
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }

    void open(CFrame* on = nullptr)
    {
        const auto panel = Kept<IFileSelector>::adopt((on ? on : frame)->createFileSelector());
        panel->run({FileSelectorOptions::openFiles, "Title", {}, "/start", ""},
                   [this](const std::vector<std::string>& paths) { answers.push_back(paths); });
    }
    // The answer of the one panel that is open.
    std::vector<std::string> answer()
    {
        EXPECT_TRUE(until([this] { return !answers.empty(); }));
        EXPECT_EQ(answers.size(), 1u);
        return std::exchange(answers, {}).at(0);
    }
    std::vector<std::string> choose()
    {
        open();
        EXPECT_TRUE(answers.empty()) << "not yet";
        return answer();
    }

    std::vector<std::vector<std::string>> answers;
    const std::string before = std::getenv("PATH");
    std::filesystem::path folder;
};
}

TEST_F(X11FileSelectorTest, AnswersWhatTheDesktopsPanelAnswersUnlessItWasCancelled)
{
    writeProgram("printf '/%s///%s///a b\\n' \"$3\" \"$WINDOWID\"");
    const std::string number = std::to_string(window().windowId());
    EXPECT_THAT(choose(), ElementsAre("/--filename=/start/", "/" + number, "/a b"));
    writeProgram("echo /a; exit 1");
    EXPECT_THAT(choose(), IsEmpty()) << "it was cancelled";
}

TEST_F(X11FileSelectorTest, GoesOnPaintingAndTakesNoClicksMeanwhile)
{
    // The panel clicks into the frame itself, and closes only when the timers have run for a while.
    const std::string done = (folder / "done").string();
    writeProgram("PATH=/usr/bin:/bin; xdotool mousemove 110 90 click 1; while [ ! -e " + done +
                 " ]; do :; done; echo /x");
    int ticks = 0;
    RepeatingTimer timer;
    timer.start(5,
                [&]
                {
                    if (++ticks == 60)
                        std::ofstream(done).put('\n');
                });
    EXPECT_THAT(choose(), ElementsAre("/x"));
    settle();
    EXPECT_FALSE(saw("view down 10,10 2"));
    setenv("PATH", before.c_str(), 1);
    click(10, 10);
    EXPECT_TRUE(until([this] { return saw("view down 10,10 2"); }));
}

TEST_F(X11FileSelectorTest, EndsWithItsFrameOrWhenItIsCancelled)
{
    const std::string number = (folder / "process").string();
    writeProgram("echo $$ >" + number + ".new; /bin/mv " + number + ".new " + number +
                 "; exec /bin/cat /dev/zero >/dev/null");
    const auto openUntilItRuns = [&]
    {
        std::filesystem::remove(number);
        open();
        EXPECT_TRUE(until([&] { return std::filesystem::exists(number); }));
        pid_t process = 0;
        std::ifstream(number) >> process;
        return process;
    };
    const auto hasEnded = [this](pid_t process)
    { return until([process] { return ::kill(process, 0) != 0; }); };

    const auto panel = Kept<IFileSelector>::adopt(frame->createFileSelector());
    panel->run({}, [this](const std::vector<std::string>& paths) { answers.push_back(paths); });
    open();
    EXPECT_THAT(answer(), IsEmpty()) << "there is one open";
    panel->cancel();
    EXPECT_TRUE(answers.empty()) << "later";
    EXPECT_THAT(answer(), IsEmpty());

    const pid_t first = openUntilItRuns();
    host = std::make_unique<HostWindow>();
    EXPECT_THAT(answer(), IsEmpty()) << "the host's window has gone";
    EXPECT_TRUE(hasEnded(first));
    closeFrame();
    openFrame();
    const pid_t second = openUntilItRuns();
    closeFrame();
    EXPECT_THAT(std::exchange(answers, {}), ElementsAre(IsEmpty())) << "at once: the loop may end, too";
    EXPECT_TRUE(hasEnded(second));
}

// At any moment of the panel's life. Its callback closes the frame, too.
TEST_F(X11FileSelectorTest, EndsOnceWhateverEndsIt)
{
    const auto close = [this]
    {
        if (CFrame* const open = std::exchange(frame, nullptr))
        {
            idle.stop();
            open->close();
            open->forget();
        }
    };
    const std::function<void()> ways[] = {close, [this] { frame->removeAll(true); },
                                          [this] { xcb_kill_client(observer->xcb(), window().windowId()); },
                                          [this] { host = std::make_unique<HostWindow>(); },
                                          [this] { writeProgram("echo /x"); }};
    close();
    for (int moments = 0; moments < 12; ++moments)
        for (const auto& way : ways)
        {
            writeProgram("exec /bin/cat /dev/zero >/dev/null");
            openFrame();
            const auto panel = Kept<IFileSelector>::adopt(frame->createFileSelector());
            panel->run({},
                       [&](const std::vector<std::string>& paths)
                       {
                           answers.push_back(paths);
                           close();
                       });
            for (int i = 0; i < moments; ++i)
                loop.runOnce(1);
            way();
            observer->sync();
            for (int i = 0; i < 3; ++i)
                loop.runOnce(1);
            panel->cancel();
            answer();
        }
}

TEST_F(X11FileSelectorTest, TellsInTheWindowWhatIsMissing)
{
    EXPECT_THAT(choose(), IsEmpty());
    EXPECT_TRUE(until([this] { return frame->getModalView() != nullptr; }));
    const auto* const message = dynamic_cast<CMessageView*>(frame->getModalView());
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(message->getMessage().body, "To choose files, install the program \"zenity\" or \"kdialog\".");
}

// The desktop's own program, in which the user types a name.
TEST_F(X11FileSelectorTest, AnswersWhatTheUserTypesIntoZenity)
{
    setenv("PATH", before.c_str(), 1);
    setenv("GSETTINGS_BACKEND", "memory", 1);
    setenv("NO_AT_BRIDGE", "1", 1);
    const auto panel = Kept<IFileSelector>::adopt(frame->createFileSelector());
    panel->run(
        {FileSelectorOptions::saveFile, "Save Preset", {{"Presets", "dks"}}, folder.string(), "old.dks"},
        [this](const std::vector<std::string>& paths) { answers.push_back(paths); });
    user("search --sync --onlyvisible --name ^Save windowfocus --sync");
    user("key ctrl+a");
    user("type my_name.dks");
    EXPECT_TRUE(answers.empty());
    user("key Return");
    EXPECT_THAT(answer(), ElementsAre((folder / "my_name.dks").string()));
}
