// SPDX-License-Identifier: GPL-3.0-or-later
// Three hundred rounds of menus and text fields whose windows, mouse, frame, host or connection are taken
// from them, in an order that the round's number decides, and from within their own callbacks.
//
// A round opens what it likes, does the worst to it, and then counts: each menu answered once, and nothing
// was chosen once the frame was closed; each field ended at most once, and never after it was deleted; each
// press of the mouse was released; nothing is left on the server.
#include "Tovrane/window/IOptionMenu.h"
#include "windows/FieldOwner.h"
#include "windows/OtherProgram.h"
#include "windows/PlainMenu.h"
#include "windows/WindowTest.h"

#include <deque>
#include <random>

using namespace Tovra;

namespace
{
constexpr unsigned rounds = 300;

class HostileOverlays : public WindowTest
{
protected:
    struct Asked
    {
        int answers = 0;
        long index = 0;
        bool wasClosed = false; // the frame, when the answer came
    };
    // A field and its owner, who writes down how often it ended.
    struct Edited
    {
        FieldOwner owner;
        std::unique_ptr<IOSTextEdit> field;
        int ends = 0;
        bool endedWhenDeleted = false;
    };

    HostileOverlays()
    {
        menu.position = CPoint(20, 30);
        menu.add("First", 0);
        menu.addSubmenu("More").add("Inner", 0);
    }

    unsigned any(unsigned count) { return unsigned(random() % count); }

    void begin(unsigned round)
    {
        random.seed(round);
        log.clear();
        menus.clear();
        fields.clear();
        actsInCallback = 2;
        if (!isHostThere)
            host = std::make_unique<HostWindow>();
        isHostThere = true;
        openFrame();
    }

    void openMenu()
    {
        if (frame == nullptr || menus.size() > 8)
            return;
        Asked& asked = menus.emplace_back();
        const auto popUp = Kept<IOptionMenu>::adopt(window().createOptionMenu(frame));
        popUp->openMenu(menu,
                        [this, &asked](const MenuChoice& choice)
                        {
                            ++asked.answers;
                            asked.index = choice.index;
                            asked.wasClosed = frame == nullptr;
                            actInCallback();
                        });
        EXPECT_TRUE(asked.answers == 1 || menu.countedObject()->getReferenceCount() > 1);
    }

    void openField()
    {
        if (frame == nullptr || fields.size() > 8)
            return;
        Edited& edited = fields.emplace_back();
        edited.owner.onEnd = [this, &edited]
        {
            ++edited.ends;
            edited.endedWhenDeleted |= edited.field == nullptr;
            edited.field.reset();
            actInCallback();
        };
        edited.field.reset(window().createPlatformTextEdit(frame, &edited.owner, view));
        if (edited.field != nullptr)
            edited.field->setText("text");
    }

    void actInCallback()
    {
        if (actsInCallback <= 0)
            return;
        --actsInCallback;
        const std::function<void()> acts[] = {[] {}, [this] { closeFrame(); }, [this] { openMenu(); },
                                              [this] { openField(); }, [this] { deleteField(); }};
        acts[any(5)]();
    }

    void deleteField()
    {
        if (!fields.empty())
            fields[any(unsigned(fields.size()))].field.reset();
    }

    xcb_window_t frameWindow() const { return frame != nullptr ? window().windowId() : 0; }
    // The frame's own window, or one of a menu's panel or a field.
    xcb_window_t anyWindow()
    {
        std::vector<xcb_window_t> all = panels();
        if (const xcb_window_t own = frameWindow())
        {
            all.push_back(own);
            for (const xcb_window_t child : childrenOf(own))
                all.push_back(child);
        }
        return all.empty() ? 0 : all[any(unsigned(all.size()))];
    }

    template <typename Event>
    void forge(std::uint8_t type, std::uint8_t detail, xcb_window_t to)
    {
        Event event{};
        event.response_type = type;
        event.detail = detail;
        event.event = to;
        event.root_x = std::int16_t(left + 40);
        event.root_y = std::int16_t(top + 30 + any(60));
        event.event_x = std::int16_t(any(60));
        event.event_y = std::int16_t(any(60));
        event.state = any(2) == 0 ? 0 : XCB_BUTTON_MASK_1;
        event.same_screen = 1;
        stranger.send(to, event);
    }

    // Events of any kind with any content, and the plain ones of a user.
    void forgeEvents()
    {
        for (unsigned events = any(6); events > 0; --events)
        {
            const xcb_window_t to = anyWindow();
            if (to == 0)
                return;
            const std::uint8_t types[] = {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE, XCB_MOTION_NOTIFY};
            const std::uint8_t keys[] = {9, 36, 38, 113, 114, 116}; // Escape, Return, a, left, right, down
            switch (any(4))
            {
            case 0:
                forge<xcb_button_press_event_t>(types[any(3)], 1, to);
                break;
            case 1:
                forge<xcb_key_press_event_t>(any(3) == 0 ? XCB_KEY_RELEASE : XCB_KEY_PRESS, keys[any(6)], to);
                break;
            default:
                sendNoise(to);
            }
        }
    }

    void sendNoise(xcb_window_t to)
    {
        std::array<std::uint32_t, 8> words{};
        for (std::uint32_t& word : words)
            word = any(3) == 0 ? to : std::uint32_t(random());
        words[1 + any(2)] = to;
        reinterpret_cast<std::uint8_t*>(words.data())[0] = std::uint8_t(2 + any(33)); // the kind of event
        stranger.send(to, words);
    }

    void press()
    {
        if (const xcb_window_t own = frameWindow())
            forge<xcb_button_press_event_t>(XCB_BUTTON_PRESS, 1, own);
    }

    // All menus so far.
    void awaitMenus()
    {
        const auto asked = menus.end() - menus.begin(); // those that open meanwhile are another matter
        const auto isAnswered = [](const Asked& one) { return one.answers > 0; };
        EXPECT_TRUE(until([&] { return std::all_of(menus.begin(), menus.begin() + asked, isAnswered); }));
    }

    void cover()
    {
        covering.emplace(observer, stranger, X11Window::popUp, 0, X11Place{0, 0, 1024, 768});
        covering->show();
        awaitMenus();
        covering.reset();
    }

    void holdMouse()
    {
        const bool isHeld = takeMouse();
        openMenu();
        if (isHeld && any(2) == 0)
            awaitMenus();
        giveMouseBack();
    }

    void destroyHost()
    {
        host->command("destroy");
        isHostThere = false;
    }

    void toServer(void (*request)(xcb_connection_t*, xcb_window_t), xcb_window_t to)
    {
        if (to != 0)
            request(observer->xcb(), to);
    }
    static void unmap(xcb_connection_t* c, xcb_window_t w) { xcb_unmap_window(c, w); }
    static void destroy(xcb_connection_t* c, xcb_window_t w) { xcb_destroy_window(c, w); }
    static void kill(xcb_connection_t* c, xcb_window_t w) { xcb_kill_client(c, w); }

    void act()
    {
        const std::function<void()> acts[] = {
            [this] { openMenu(); },
            [this] { openMenu(); },
            [this] { openField(); },
            [this] { press(); },
            [this] { press(); },
            [this] { forgeEvents(); },
            [this] { forgeEvents(); },
            [this] { deleteField(); },
            [this] { toServer(unmap, anyWindow()); },
            [this] { toServer(destroy, anyWindow()); },
            [this] { cover(); },
            [this] { holdMouse(); },
            [this] { closeFrame(); },
            [this] { destroyHost(); },
            [this] { toServer(kill, frameWindow()); },
        };
        acts[any(unsigned(std::size(acts)))]();
        observer->flush();
        for (unsigned pumps = any(4); pumps > 0; --pumps)
            loop.runOnce(1);
    }

    void end()
    {
        if (frame != nullptr && any(2) == 0)
            settle();
        closeFrame();
        for (const Asked& asked : menus)
        {
            EXPECT_EQ(asked.answers, 1);
            EXPECT_TRUE(!asked.wasClosed || asked.index == -1);
        }
        EXPECT_EQ(menu.countedObject()->getReferenceCount(), 1) << "nobody keeps it after the answer";
        for (const Edited& edited : fields)
        {
            EXPECT_LE(edited.ends, 1);
            EXPECT_FALSE(edited.endedWhenDeleted);
        }
        const auto count = [this](const char* word) {
            return std::count_if(log.begin(), log.end(),
                                 [=](auto& entry) { return entry.starts_with(word); });
        };
        EXPECT_EQ(count("view down"), count("view up"));
        fields.clear();
    }

    std::mt19937 random;
    OtherProgram stranger;
    PlainMenu menu;
    std::deque<Asked> menus;
    std::deque<Edited> fields;
    int actsInCallback = 0;
    std::optional<X11Window> covering;
    bool isHostThere = true;
};
}

TEST_F(HostileOverlays, EndOnceWhateverIsTakenFromThem)
{
    begin(0);
    end();
    const std::size_t resources = serverResources();
    for (unsigned round = 1; round <= rounds && !HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        begin(round);
        openField();
        openMenu();
        for (unsigned acts = 2 + any(5); acts > 0; --acts)
            act();
        end();
    }
    begin(0);
    end();
    EXPECT_TRUE(until([&] { return serverResources() <= resources; }))
        << serverResources() << " of " << resources;
}
