// SPDX-License-Identifier: GPL-3.0-or-later
// A frame in a window of another process, on a real X server, with a user who moves the mouse and types.
//
// until() runs the loop until something is so; ten seconds without that are a failure, and nothing else looks
// at the time.
#pragma once

#include "Tovrane/base/PollRunLoop.h"
#include "Tovrane/platform/x11/frame/X11Frame.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/views/tree/RecordingView.h"
#include "windows/HostWindow.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

// Records keys and drags in more detail: "key a 0 1" is character, virtual key and modifiers.
class UserView : public Recording<Tovra::CView>
{
public:
    UserView(Log& written, const Tovra::CRect& rect);

    // Left half red, right half blue.
    void draw(Tovra::CDrawContext* context) override;
    long onKeyDown(Tovra::TovraKeyCode& code) override;
    long onKeyUp(Tovra::TovraKeyCode& code) override;
    void onDragEnter(Tovra::CDragContainer* drag, const Tovra::CPoint& where) override;
    bool onDrop(Tovra::CDragContainer* drag, const Tovra::CPoint& where) override;

    long keyAnswer = Tovra::kKeyConsumed;
    long keyUpAnswer = Tovra::kKeyConsumed;
    bool takesDrops = true;

private:
    Log& log;
};

class WindowTest : public testing::Test
{
protected:
    static constexpr int width = 300;
    static constexpr int height = 200;
    // Of the host's window on the screen.
    static constexpr int left = 100;
    static constexpr int top = 80;

    WindowTest();
    ~WindowTest() override;

    // Opens a frame with one view all over it, in the host's window or another one.
    void openFrame(void* parent = nullptr);
    void closeFrame();
    Tovra::X11Frame& window() const { return *dynamic_cast<Tovra::X11Frame*>(frame->getOSFrame()); }

    bool until(const std::function<bool()>& isSo);
    // Runs what is waiting, until the server has nothing more to say.
    void settle();
    static std::vector<std::string> wordsOf(const std::string& line);
    // A program and its words, parted by spaces; what it wrote. The loop runs meanwhile.
    std::string run(const std::string& words);
    // xdotool, with places relative to the frame.
    void user(const std::string& words) { run("xdotool " + words); }
    void moveTo(int x, int y)
    {
        user("mousemove " + std::to_string(left + x) + " " + std::to_string(top + y));
    }
    void click(int x, int y, int button = 1);
    // The keyboard's layout until the test ends. For keys that it does not have, xdotool changes it and
    // changes it back at once, which a busy program may see too late.
    void setLayout(const std::string& layout);
    // The window that gets the keys.
    xcb_window_t focus() const;
    // Clicks the frame and waits until keys go there.
    void takeKeyboard();
    bool saw(const std::string& entry) const;

    // What the screen shows, relative to the frame: 0xRRGGBB.
    std::uint32_t pixel(int x, int y) const;

    std::vector<xcb_window_t> childrenOf(xcb_window_t parent) const; // from below
    // Windows that are seen on the screen and are not the host's, from below.
    std::vector<xcb_window_t> panels() const;
    // Another client's grab; false if somebody else has it.
    bool takeMouse();
    void giveMouseBack();
    // All that all clients have on the server.
    std::size_t serverResources() const;

    Tovra::PollRunLoop loop;
    std::unique_ptr<HostWindow> host;
    std::shared_ptr<Tovra::X11Connection> observer; // somebody else's eyes
    Log log;
    Tovra::CFrame* frame = nullptr;
    UserView* view = nullptr; // the frame's
    Tovra::RepeatingTimer idle;
    bool isLayoutSet = false;
};
