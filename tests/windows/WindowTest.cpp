// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/WindowTest.h"

#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/platform/parts/ChildProcess.h"
#include "Tovrane/window/CDragContainer.h"

#include <chrono>
#include <cstring>
#include <iterator>
#include <sstream>
#include <utility>
#include <xcb/res.h>

using namespace Tovra;

namespace
{
std::string described(const char* word, const TovraKeyCode& code)
{
    std::ostringstream text;
    text << word << ' ';
    if (code.character > 0x20 && code.character < 0x7f)
        text << char(code.character);
    else
        text << code.character;
    text << ' ' << int(code.virtualKey) << ' ' << int(code.modifiers);
    return text.str();
}

std::string described(CDragContainer& drag)
{
    std::ostringstream text;
    text << drag.getCount();
    long size = 0;
    long type = 0;
    for (void* item = drag.first(size, type); item != nullptr; item = drag.next(size, type))
        text << ' ' << type << ':' << std::string(static_cast<char*>(item), std::size_t(size));
    return text.str();
}
}

UserView::UserView(Log& written, const CRect& rect) : Recording(written, "view", rect), log(written) {}

void UserView::draw(CDrawContext* context)
{
    const CRect& all = getViewSize();
    const double middle = all.left + all.getWidth() / 2.0;
    context->setFillColor(kRedCColor);
    context->drawRect(CRect(all.left, all.top, middle, all.bottom), kFilled);
    context->setFillColor(kBlueCColor);
    context->drawRect(CRect(middle, all.top, all.right, all.bottom), kFilled);
    setDirty(false);
}

long UserView::onKeyDown(TovraKeyCode& code)
{
    log.push_back(described("key", code));
    return keyAnswer;
}

long UserView::onKeyUp(TovraKeyCode& code)
{
    log.push_back(described("up", code));
    return keyUpAnswer;
}

void UserView::onDragEnter(CDragContainer* drag, const CPoint& where)
{
    Recording::onDragEnter(drag, where);
    log.push_back("content " + described(*drag));
}

bool UserView::onDrop(CDragContainer* drag, const CPoint& where)
{
    Recording::onDrop(drag, where);
    log.push_back("dropped " + described(*drag));
    return takesDrops;
}

WindowTest::WindowTest()
{
    RunLoop::enter(loop);
    useX11Frames();
    observer = X11Connection::open();
    host = std::make_unique<HostWindow>();
}

WindowTest::~WindowTest()
{
    if (isLayoutSet)
        run("setxkbmap us");
    closeFrame();
    IFrame::setPlatformFactory(nullptr);
}

void WindowTest::openFrame(void* parent)
{
    const CRect all(0.0, 0.0, width, height);
    frame = new CFrame(all, parent != nullptr ? parent : host->parent(), nullptr);
    view = new UserView(log, all);
    view->answers = {{"down", kMouseHandled}, {"wheel", 1}};
    frame->addView(view);
    frame->setFocusView(view);
    frame->idle();
    idle.start(20, [this] { frame->idle(); });
    settle();
}

void WindowTest::closeFrame()
{
    idle.stop();
    CFrame* const closed = std::exchange(frame, nullptr); // what ends with it may close it again
    view = nullptr;
    if (closed == nullptr)
        return;
    closed->close();
    closed->forget();
}

bool WindowTest::until(const std::function<bool()>& isSo)
{
    using clock = std::chrono::steady_clock;
    const auto end = clock::now() + std::chrono::seconds(10);
    while (!isSo())
    {
        if (clock::now() > end)
            return false;
        loop.runOnce(5);
        host->read();
    }
    return true;
}

void WindowTest::settle()
{
    observer->sync();
    window().sharedConnection()->sync();
    window().sharedConnection()->dispatch();
}

std::vector<std::string> WindowTest::wordsOf(const std::string& line)
{
    std::istringstream parts(line);
    return {std::istream_iterator<std::string>(parts), {}};
}

std::string WindowTest::run(const std::string& words)
{
    ChildProcess child;
    if (!child.start(wordsOf(words), {}) || !until([&] { return !child.isRunning(); }) || !child.succeeded())
        ADD_FAILURE() << words << " failed";
    return child.output();
}

void WindowTest::setLayout(const std::string& layout)
{
    isLayoutSet = true;
    run("setxkbmap " + layout);
}

void WindowTest::click(int x, int y, int button)
{
    moveTo(x, y);
    user("click " + std::to_string(button));
}

void WindowTest::takeKeyboard()
{
    click(10, 10);
    EXPECT_TRUE(until([this] { return focus() == window().windowId(); }));
}

xcb_window_t WindowTest::focus() const
{
    xcb_connection_t* c = observer->xcb();
    const auto reply = observer->reply(xcb_get_input_focus_reply, xcb_get_input_focus(c));
    return reply ? reply->focus : 0;
}

bool WindowTest::saw(const std::string& entry) const
{
    return std::find(log.begin(), log.end(), entry) != log.end();
}

// The part of a pixel under a mask, as 8 bits.
static std::uint32_t partOf(std::uint32_t word, std::uint32_t mask)
{
    return std::uint32_t((std::uint64_t(word & mask) * 255 + mask / 2) / mask);
}

std::uint32_t WindowTest::pixel(int x, int y) const
{
    xcb_connection_t* c = observer->xcb();
    const auto asked = xcb_get_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, observer->screen().root,
                                     std::int16_t(left + x), std::int16_t(top + y), 1, 1, ~0u);
    const X11Reply<xcb_get_image_reply_t> image{xcb_get_image_reply(c, asked, nullptr)};
    if (image == nullptr)
        return ~0u;
    std::uint32_t word = 0;
    std::memcpy(&word, xcb_get_image_data(image.get()), std::min(4, xcb_get_image_data_length(image.get())));
    for (auto depths = xcb_screen_allowed_depths_iterator(&observer->screen()); depths.rem > 0;
         xcb_depth_next(&depths))
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0;
             xcb_visualtype_next(&visuals))
            if (const xcb_visualtype_t& visual = *visuals.data;
                visual.visual_id == observer->screen().root_visual)
                return partOf(word, visual.red_mask) << 16 | partOf(word, visual.green_mask) << 8 |
                       partOf(word, visual.blue_mask);
    return ~0u;
}

std::vector<xcb_window_t> WindowTest::childrenOf(xcb_window_t parent) const
{
    xcb_connection_t* c = observer->xcb();
    const auto tree = observer->reply(xcb_query_tree_reply, xcb_query_tree(c, parent));
    if (tree == nullptr)
        return {};
    const xcb_window_t* const first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

std::vector<xcb_window_t> WindowTest::panels() const
{
    xcb_connection_t* c = observer->xcb();
    std::vector<xcb_window_t> found;
    for (const xcb_window_t child : childrenOf(observer->screen().root))
    {
        const auto about =
            observer->reply(xcb_get_window_attributes_reply, xcb_get_window_attributes(c, child));
        if (child != host->window() && about && about->map_state == XCB_MAP_STATE_VIEWABLE)
            found.push_back(child);
    }
    return found;
}

bool WindowTest::takeMouse()
{
    xcb_connection_t* c = observer->xcb();
    const auto asked = xcb_grab_pointer(c, 0, observer->screen().root, 0, XCB_GRAB_MODE_ASYNC,
                                        XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    const auto grabbed = observer->reply(xcb_grab_pointer_reply, asked);
    return grabbed != nullptr && grabbed->status == XCB_GRAB_STATUS_SUCCESS;
}

void WindowTest::giveMouseBack()
{
    xcb_ungrab_pointer(observer->xcb(), XCB_CURRENT_TIME);
    observer->flush();
}

std::size_t WindowTest::serverResources() const
{
    xcb_connection_t* c = observer->xcb();
    const auto clients = observer->reply(xcb_res_query_clients_reply, xcb_res_query_clients(c));
    std::size_t total = std::size_t(xcb_res_query_clients_clients_length(clients.get()));
    for (auto client = xcb_res_query_clients_clients_iterator(clients.get()); client.rem > 0;
         xcb_res_client_next(&client))
    {
        const auto asked = xcb_res_query_client_resources(c, client.data->resource_base);
        const X11Reply<xcb_res_query_client_resources_reply_t> resources{
            xcb_res_query_client_resources_reply(c, asked, nullptr)};
        for (auto type = xcb_res_query_client_resources_types_iterator(resources.get()); type.rem > 0;
             xcb_res_type_next(&type))
            total += type.data->count;
    }
    return total;
}
