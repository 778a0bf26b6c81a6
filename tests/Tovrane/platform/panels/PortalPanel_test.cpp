// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/VirtualClock.h"
#include "Tovrane/platform/panels/PortalPanel.h"
#include "Tovrane/platform/panels/PrivateBus.h"

#include <optional>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Tovra;
using testing::HasSubstr;
using testing::IsEmpty;
using Options = FileSelectorOptions;
using Paths = std::vector<std::string>;
using enum PanelWay::End;

namespace Tovra
{
static void PrintTo(PanelWay::End end, std::ostream* out)
{
    *out << (end == chosen ? "chosen" : end == cancelled ? "cancelled" : "unavailable");
}
}

namespace
{
class PortalPanelTest : public PrivateBus
{
protected:
    struct Outcome
    {
        PanelWay::End end;
        Paths paths;
        bool operator==(const Outcome&) const = default;
        friend void PrintTo(const Outcome& o, std::ostream* out)
        {
            Tovra::PrintTo(o.end, out);
            *out << testing::PrintToString(o.paths);
        }
    };

    void open(const Options& options = {})
    {
        outcome.reset();
        panel = std::make_unique<PortalPanel>(address);
        panel->open(options, 0x2a,
                    [this](PanelWay::End end, const Paths& paths)
                    {
                        EXPECT_FALSE(outcome) << "twice";
                        outcome = Outcome{end, paths};
                    });
    }
    Outcome result(const Options& options = {})
    {
        open(options);
        EXPECT_TRUE(until([this] { return outcome.has_value(); }));
        return outcome.value_or(Outcome{unavailable, {"it hung"}});
    }

    std::unique_ptr<PortalPanel> panel;
    std::optional<Outcome> outcome;
};
}

TEST_F(PortalPanelTest, AnswersWhatThePortalAnswers)
{
    const struct
    {
        std::vector<std::string> steps;
        Outcome outcome;
    } cases[] = {
        {{"handle", "respond 0 file:///a%20b%25 file:///%C3%A4"}, {chosen, {"/a b%", "/\xC3\xA4"}}},
        {{"handle-at /some/where", "respond 0 file:///x"}, {chosen, {"/x"}}},
        {{"respond 0 file:///early", "handle"}, {chosen, {"/early"}}},
        {{"handle", "respond 1"}, {cancelled, {}}},
        {{"handle", "respond 2"}, {cancelled, {}}},
        {{"handle", "respond 1 file:///x"}, {cancelled, {}}},
        {{"handle", "respond 0"}, {cancelled, {}}},
        {{"handle",
          "respond 0 http://a/b file://elsewhere/x file:/x file:///a%00b file:///%zz /x file:///ok"},
         {chosen, {"/ok"}}},
        {{"handle", "text-as-uris"}, {cancelled, {}}},
        {{"handle", "empty-response"}, {cancelled, {}}},
        {{"handle", "stranger file:///evil", "respond 0 file:///good"}, {chosen, {"/good"}}},
        {{"handle", "leave"}, {cancelled, {}}},
        {{"handle", "die"}, {cancelled, {}}},
        {{"leave"}, {unavailable, {}}},
        {{"die"}, {unavailable, {}}},
        {{"error"}, {unavailable, {}}},
        {{"nonsense"}, {unavailable, {}}},
        {{"no-chooser"}, {unavailable, {}}},
    };
    for (const auto& c : cases)
    {
        startPortal(c.steps);
        EXPECT_EQ(result(), c.outcome) << testing::PrintToString(c.steps);
        portal.reset();
        EXPECT_EQ(result(), (Outcome{unavailable, {}})) << "there is no portal";
    }
}

TEST_F(PortalPanelTest, SaysWhatIsWanted)
{
    const struct
    {
        Options options;
        const char* call;
    } cases[] = {
        {{}, "OpenFile 'x11:2a' '' ['handle_token' 'tovrane_panel']\n"},
        {{Options::openFiles, "100%s \xC3\xA4\xFF", {{"Presets", "dks"}, {"All", "*"}}, "/a \xFF", "no"},
         "OpenFile 'x11:2a' '100%s \xC3\xA4\xEF\xBF\xBD' ['handle_token' 'tovrane_panel' 'multiple' true "
         "'filters' [('Presets' [(0 '*.dks')]) ('All' [(0 '*')])] 'current_folder' [/a \xFF\\0]]\n"},
        {{Options::openFolder, "F", {{"ignored", "x"}}, "relative", ""},
         "OpenFile 'x11:2a' 'F' ['handle_token' 'tovrane_panel' 'directory' true]\n"},
        {{Options::saveFile, "S", {}, "/f", "/elsewhere/name.dks"},
         "SaveFile 'x11:2a' 'S' ['handle_token' 'tovrane_panel' 'current_folder' [/f\\0] "
         "'current_name' 'name.dks']\n"},
    };
    for (const auto& c : cases)
    {
        startPortal({"handle", "respond 1"});
        result(c.options);
        EXPECT_THAT(portal->output(), HasSubstr(c.call));
    }
    startPortal({"version 2", "handle", "respond 0 file:///x"});
    EXPECT_EQ(result({Options::openFolder, "", {}, "", ""}).end, unavailable) << "it would choose files";
    EXPECT_EQ(result().end, chosen);
}

TEST_F(PortalPanelTest, ClosesWhatItShowsAndEndsWithTheBus)
{
    const auto show = [this]
    {
        startPortal({"handle"});
        open();
        EXPECT_TRUE(until([this] { return panel->isShown(); }));
        EXPECT_FALSE(outcome);
    };
    show();
    panel.reset();
    EXPECT_TRUE(portalWrote("\nClose\n"));
    EXPECT_FALSE(outcome);

    show();
    bus.reset();
    ASSERT_TRUE(until([this] { return outcome.has_value(); }));
    EXPECT_EQ(*outcome, (Outcome{cancelled, {}}));
    EXPECT_EQ(result(), (Outcome{unavailable, {}})) << "there is no bus";
    address = "";
    EXPECT_EQ(result(), (Outcome{unavailable, {}}));
}

// A bus that accepts nobody: first there is room to wait in, then connecting itself would wait for ever.
TEST_F(PortalPanelTest, WaitsForNoBusThatHangs)
{
    sockaddr_un place{AF_UNIX, ""};
    (folder / "bus").copy(place.sun_path, sizeof place.sun_path - 1);
    const auto* const at = reinterpret_cast<const sockaddr*>(&place);
    const int listening = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(listening, at, sizeof place), 0);
    ASSERT_EQ(listen(listening, 2), 0);
    address = "unix:path=" + std::string(place.sun_path);
    const VirtualClock clock;
    EXPECT_EQ(result(), (Outcome{unavailable, {}}));

    std::vector<int> waiting;
    do
        waiting.push_back(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0));
    while (connect(waiting.back(), at, sizeof place) == 0);
    EXPECT_EQ(result(), (Outcome{unavailable, {}}));
    EXPECT_GE(clock.milliseconds(), 2 * PortalPanel::longestWait);
    panel.reset();
    for (const int each : waiting)
        close(each);
    close(listening);
}
