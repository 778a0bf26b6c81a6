// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/FrameOverlays.h"

#include <functional>
#include <gmock/gmock.h>
#include <memory>

using namespace Tovra;
using testing::ElementsAre;

namespace
{
using Log = std::vector<std::string>;

class Shown final : public FrameOverlay
{
public:
    Shown(FrameOverlays& list, Log& written, const char* called, OverlayKind kind)
        : log(written), name(called)
    {
        handle.open(list, *this, kind);
    }

    void overlayLost() override
    {
        log.push_back(name + " lost");
        if (onLost)
            onLost();
    }
    long overlayKeyDown(const TovraKeyCode&, const std::string& typed) override
    {
        log.push_back(name + " " + typed);
        return kKeyConsumed;
    }
    void overlayFocused(bool focused) override { log.push_back(name + (focused ? " on" : " off")); }

    OverlayHandle handle;
    std::function<void()> onLost;

private:
    Log& log;
    const std::string name;
};

Log taken(Log& log)
{
    return std::exchange(log, {});
}
}

TEST(FrameOverlays, GiveTheKeysToTheOneOnTop)
{
    FrameOverlays list;
    Log log;
    const auto key = [&] { return list.keyDown({}, "k"); };
    EXPECT_EQ(key(), kKeyNotHandled);
    auto first = std::make_unique<Shown>(list, log, "first", OverlayKind::field);
    auto menu = std::make_unique<Shown>(list, log, "menu", OverlayKind::menu);
    EXPECT_TRUE(list.takeInput());
    Shown panel(list, log, "panel", OverlayKind::panel);
    auto second = std::make_unique<Shown>(list, log, "second", OverlayKind::field);
    EXPECT_THAT(taken(log), ElementsAre("first on", "first off", "second on"));
    key();
    menu.reset();
    key();
    panel.handle.close();
    EXPECT_FALSE(list.takeInput());
    key();
    first->handle.raise();
    key();
    EXPECT_THAT(taken(log),
                ElementsAre("menu k", "panel k", "second k", "second off", "first on", "first k"));
    list.setFocused(false);
    first.reset();
    list.setFocused(true);
    EXPECT_THAT(taken(log), ElementsAre("first off", "second off", "second on"));
}

TEST(FrameOverlays, HaveOneMenuAndOnePanelAtATime)
{
    FrameOverlays list;
    Log log;
    for (const auto kind : {OverlayKind::menu, OverlayKind::panel})
    {
        const Shown first(list, log, "first", kind);
        const Shown second(list, log, "second", kind);
        EXPECT_TRUE(first.handle.isOpen() && !second.handle.isOpen());
        EXPECT_TRUE(list.lose(kind));
        EXPECT_FALSE(list.lose(kind));
    }
    EXPECT_THAT(log, ElementsAre("first lost", "first lost"));
}

// Each callback is called once, and may destroy the others, open new ones, or end the list again.
TEST(FrameOverlays, EndOnceWhateverTheirCallbacksDo)
{
    Log log;
    auto list = std::make_unique<FrameOverlays>();
    auto field = std::make_unique<Shown>(*list, log, "field", OverlayKind::field);
    auto other = std::make_unique<Shown>(*list, log, "other", OverlayKind::field);
    auto menu = std::make_unique<Shown>(*list, log, "menu", OverlayKind::menu);
    std::unique_ptr<Shown> late;
    log.clear();
    menu->onLost = [&] { late = std::make_unique<Shown>(*list, log, "late", OverlayKind::menu); };
    other->onLost = [&]
    {
        list->shut();
        field.reset();
    };
    list->shut();
    EXPECT_FALSE(late->handle.isOpen());
    list.reset();
    EXPECT_THAT(log, ElementsAre("menu lost", "other lost", "field lost"));
}
