// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/PollRunLoop.h"
#include "Tovrane/platform/parts/ChildProcess.h"
#include "Tovrane/platform/parts/FileDialogCommand.h"

#include <csignal>
#include <gmock/gmock.h>
#include <memory>

using namespace Tovra;
using testing::ElementsAre;
using testing::IsEmpty;

using Options = FileSelectorOptions;

TEST(FileDialogCommand, PutsEachOptionInAWordOfItsOwn)
{
    const Options open{
        Options::openFiles, "Load $(x)\n'y'", {{"Presets|", "dks"}, {"All Files", "*"}}, "/p q", "a"};
    EXPECT_THAT(fileDialogCommand(FileDialogProgram::zenity, open, 7, "/home/u"),
                ElementsAre("zenity", "--file-selection", "--title=Load $(x) 'y'", "--filename=/p q/a",
                            "--multiple", "--separator=//", "--file-filter=Presets | *.dks",
                            "--file-filter=All Files | *"));
    EXPECT_THAT(fileDialogCommand(FileDialogProgram::kdialog, open, 7, "/home/u"),
                ElementsAre("kdialog", "--title", "Load $(x) 'y'", "--attach", "7", "--multiple",
                            "--separate-output", "--getopenfilename", "/p q/a",
                            "*.dks|Presets\n*|All Files"));
    const Options save{Options::saveFile, "", {}, "", "../../--help"};
    EXPECT_THAT(fileDialogCommand(FileDialogProgram::zenity, save, 0, "/home/u"),
                ElementsAre("zenity", "--file-selection", "--title=", "--filename=/home/u/--help", "--save"));
    const Options folder{Options::openFolder, "F", {}, "-x", ""};
    EXPECT_THAT(fileDialogCommand(FileDialogProgram::kdialog, folder, 0, ""),
                ElementsAre("kdialog", "--title", "F", "--getexistingdirectory", "/-x/"));
}

TEST(FileDialogCommand, ReadsAbsolutePathsAlone)
{
    EXPECT_THAT(fileDialogAnswer(FileDialogProgram::zenity, "/a/b\nc///d e\n"),
                ElementsAre("/a/b\nc", "/d e"));
    EXPECT_THAT(fileDialogAnswer(FileDialogProgram::zenity, "////a////b/\n"), ElementsAre("/", "/a/", "/b/"));
    EXPECT_THAT(fileDialogAnswer(FileDialogProgram::kdialog, "/a\nnoise\n/b\n"), ElementsAre("/a", "/b"));
    EXPECT_THAT(fileDialogAnswer(FileDialogProgram::kdialog, "Gtk-WARNING\n"), IsEmpty());
    EXPECT_THAT(fileDialogAnswer(FileDialogProgram::zenity, ""), IsEmpty());
}

TEST(FileDialogCommand, TakesTheDesktopsOwnProgram)
{
    using enum FileDialogProgram;
    EXPECT_THAT(fileDialogPrograms("GNOME"), ElementsAre(zenity, kdialog));
    EXPECT_THAT(fileDialogPrograms("plasma:KDE"), ElementsAre(kdialog, zenity));
}

namespace
{
class AChildProcess : public testing::Test
{
protected:
    AChildProcess() { RunLoop::enter(loop); }

    // Until it has ended.
    bool run(ChildProcess& child, const std::vector<std::string>& words)
    {
        bool hasEnded = false;
        if (!child.start(words, {"ADDED=yes", "PATH=/usr/bin:/bin"}, [&] { hasEnded = true; }))
            return false;
        while (!hasEnded)
            loop.runOnce(1000);
        EXPECT_FALSE(child.isRunning());
        return child.succeeded();
    }

    PollRunLoop loop;
};
}

TEST_F(AChildProcess, AnswersWithAllThatItWroteAndSaysHowItEnded)
{
    ChildProcess echo;
    EXPECT_TRUE(run(echo, {"printf", "%s", "$ADDED; `id` %n \n"}));
    EXPECT_EQ(echo.output(), "$ADDED; `id` %n \n") << "no shell in between";
    ChildProcess environment;
    EXPECT_TRUE(run(environment, {"sh", "-c", "echo $ADDED; ls /proc/self/fd | wc -l"}));
    EXPECT_EQ(environment.output(), "yes\n4\n")
        << "0, 1, 2 and the folder that ls reads: nothing was inherited";
    ChildProcess failing;
    EXPECT_FALSE(run(failing, {"sh", "-c", "echo /a; exit 1"}));
    ChildProcess flood;
    EXPECT_FALSE(run(flood, {"head", "-c", "2000000", "/dev/zero"}));
    ChildProcess none;
    EXPECT_FALSE(run(none, {"no-such-program-here"}));
    EXPECT_FALSE(none.isRunning());
    EXPECT_TRUE(ChildProcess::isInstalled("sh"));
    EXPECT_FALSE(ChildProcess::isInstalled("no-such-program-here"));
}

TEST_F(AChildProcess, EndsWithItsObject)
{
    auto child = std::make_unique<ChildProcess>();
    ASSERT_TRUE(child->start({"sh", "-c", "echo $$; trap '' TERM; exec cat /dev/zero >/dev/null"}, {}));
    while (child->output().find('\n') == std::string::npos)
        loop.runOnce(1000);
    const pid_t process = std::stoi(child->output());
    EXPECT_EQ(::kill(process, 0), 0);
    child.reset();
    while (::kill(process, 0) == 0)
        loop.runOnce(1000);
}
