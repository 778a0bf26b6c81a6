// SPDX-License-Identifier: GPL-3.0-or-later
#include "Sonvex/MessageBox.h"
#include "Tovrane/window/IFileSelector.h"
#include "windows/WindowTest.h"

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
    }
    ~X11FileSelectorTest() override
    {
        setenv("PATH", before.c_str(), 1);
        std::filesystem::remove_all(folder);
    }

    void writeProgram(const std::string& script)
    {
        const std::filesystem::path file = folder / "zenity";
        std::ofstream(file) << "#!/bin/sh\n" << script;
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }

    std::vector<std::string> choose()
    {
        const auto panel = Kept<IFileSelector>::adopt(window().createFileSelector(frame));
        return panel->run({FileSelectorOptions::openFiles, "Title", {}, "/start", ""});
    }

    const std::string before = std::getenv("PATH");
    std::filesystem::path folder;
};

struct Box final : Sonvex::IMessageBoxPresenter
{
    Box() { Sonvex::setMessageBoxPresenter(this); }
    ~Box() { Sonvex::setMessageBoxPresenter(nullptr); }
    int show(CFrame*, Sonvex::MessageBoxType, const char*, const char* body) override
    {
        shown.push_back(body);
        return 0;
    }
    std::vector<std::string> shown;
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

TEST_F(X11FileSelectorTest, EndsWithItsFrame)
{
    writeProgram("exec /bin/cat /dev/zero >/dev/null");
    RepeatingTimer end;
    end.start(50, [this] { closeFrame(); });
    EXPECT_THAT(choose(), IsEmpty());
}

TEST_F(X11FileSelectorTest, TellsWhatIsMissing)
{
    Box box;
    EXPECT_THAT(choose(), IsEmpty());
    EXPECT_THAT(box.shown, ElementsAre("To choose files, install the program \"zenity\" or \"kdialog\"."));
}
