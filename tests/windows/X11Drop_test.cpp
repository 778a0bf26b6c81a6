#include "windows/WindowTest.h"

#include <map>

using namespace Tovra;
using testing::Contains;

namespace
{
// Another program that drags something over the frame: its own connection and window.
class DragSource : public X11EventSink
{
public:
    explicit DragSource(xcb_window_t over)
        : server(X11Connection::open()),
          window(std::in_place, server, static_cast<X11EventSink&>(*this), X11Window::popUp, 0,
                 X11Place{600, 600, 5, 5}),
          target(over)
    {
    }

    // The content by its form; without an entry the source offers the form and never answers.
    std::map<std::string, std::string> content;
    std::vector<std::string> offered;

    void enter()
    {
        xcb_set_selection_owner(c(), window->id(), server->atom(X11Atom::dndSelection), XCB_CURRENT_TIME);
        std::vector<xcb_atom_t> forms;
        for (const std::string& name : offered)
            forms.push_back(named(name));
        xcb_change_property(c(), XCB_PROP_MODE_REPLACE, window->id(), server->atom(X11Atom::dndTypeList),
                            XCB_ATOM_ATOM, 32, std::uint32_t(forms.size()), forms.data());
        const bool isLong = forms.size() > 3;
        forms.resize(3);
        send(X11Atom::dndEnter, {(5u << 24) | (isLong ? 1u : 0u), forms[0], forms[1], forms[2]});
    }
    void position(std::uint32_t x, std::uint32_t y)
    {
        send(X11Atom::dndPosition, {0, x << 16 | y, XCB_CURRENT_TIME, server->atom(X11Atom::dndActionCopy)});
    }
    void leave() { send(X11Atom::dndLeave, {}); }
    void drop() { send(X11Atom::dndDrop, {0, XCB_CURRENT_TIME}); }
    void die()
    {
        window.reset();
        server->flush();
    }

    int statuses = 0;
    bool isAccepted = false;
    int finished = -1; // 1: the drop was taken

private:
    xcb_connection_t* c() { return server->xcb(); }

    xcb_atom_t named(const std::string& name)
    {
        const auto asked = xcb_intern_atom(c(), 0, std::uint16_t(name.size()), name.data());
        return X11Reply<xcb_intern_atom_reply_t>
        {
            xcb_intern_atom_reply(c(), asked, nullptr)
            } -> atom;
    }

    void send(X11Atom type, std::vector<std::uint32_t> words)
    {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = target;
        message.type = server->atom(type);
        message.data.data32[0] = window->id();
        std::copy(words.begin(), words.end(), message.data.data32 + 1);
        xcb_send_event(c(), 0, target, 0, reinterpret_cast<const char*>(&message));
        server->flush();
    }

    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override
    {
        if (type == XCB_SELECTION_REQUEST)
            return answer(as<xcb_selection_request_event_t>(event));
        if (type != XCB_CLIENT_MESSAGE)
            return;
        const auto& message = as<xcb_client_message_event_t>(event);
        const bool isYes = (message.data.data32[1] & 1) != 0;
        if (message.type == server->atom(X11Atom::dndStatus))
        {
            ++statuses;
            isAccepted = isYes;
        }
        else if (message.type == server->atom(X11Atom::dndFinished))
            finished = isYes ? 1 : 0;
    }

    void answer(const xcb_selection_request_event_t& request)
    {
        for (const auto& [name, bytes] : content)
            if (named(name) == request.target)
            {
                xcb_change_property(c(), XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                                    request.target, 8, std::uint32_t(bytes.size()), bytes.data());
                xcb_selection_notify_event_t notify{};
                notify.response_type = XCB_SELECTION_NOTIFY;
                notify.requestor = request.requestor;
                notify.selection = request.selection;
                notify.target = request.target;
                notify.property = request.property;
                char sent[32] = {};
                std::copy_n(reinterpret_cast<const char*>(&notify), sizeof notify, sent);
                xcb_send_event(c(), 0, request.requestor, 0, sent);
                server->flush();
            }
    }

    const std::shared_ptr<X11Connection> server;
    std::optional<X11Window> window;
    const xcb_window_t target;
};

class X11DropTest : public WindowTest
{
protected:
    X11DropTest()
    {
        openFrame();
        source = std::make_unique<DragSource>(window().windowId());
    }
    std::unique_ptr<DragSource> source;
};
}

TEST_F(X11DropTest, BringsTextsAndFiles)
{
    const std::string utf8 = "UTF8_STRING";
    const std::string files = "text/uri-list";
    const struct
    {
        std::map<std::string, std::string> content;
        const char* expected;
    } cases[] = {
        {{{utf8, "a\n\xc3\xa4"}}, "1 2:a\n\xc3\xa4"},
        {{{"text/plain", "plain"}, {"a/b", ""}, {"c/d", ""}, {"e/f", ""}}, "1 2:plain"},
        {{{files, "file:///a\r\nfile:///b%20c\r\nfile:///d\r\n"}}, "3 0:/a 0:/b c 0:/d"},
        {{{files, "file:///a\r\n"}, {utf8, "a text"}}, "1 2:a text"},
        {{{files, "file:///a\r\n"}, {utf8, "/a\n"}}, "1 0:/a"},
        {{{files, "http://x/y\r\n"}, {utf8, "http://x/y"}}, "1 2:http://x/y"},
    };
    for (const auto& one : cases)
    {
        SCOPED_TRACE(one.expected);
        source->content = one.content;
        source->offered.clear();
        for (const auto& [name, bytes] : one.content)
            source->offered.push_back(name);
        source->finished = -1;
        log.clear();
        source->enter();
        source->position(left + 10, top + 20);
        EXPECT_TRUE(until([&] { return saw(std::string("content ") + one.expected); }));
        source->position(left + 30, top + 40);
        source->drop();
        EXPECT_TRUE(until([this] { return source->finished == 1; }));
        EXPECT_THAT(
            log, testing::IsSupersetOf({"view dragEnter 10,20", "view dragMove 30,40", "view drop 30,40"}));
        EXPECT_THAT(log, Contains(std::string("dropped ") + one.expected));
        EXPECT_TRUE(source->isAccepted);
    }
}

TEST_F(X11DropTest, SaysNoToWhatItHasNoUseFor)
{
    source->offered = {"image/png"};
    source->enter();
    source->position(left + 10, top + 20);
    source->position(left + 11, top + 20);
    EXPECT_TRUE(until([this] { return source->statuses == 2; }));
    EXPECT_FALSE(source->isAccepted);
    source->drop();
    EXPECT_TRUE(until([this] { return source->finished == 0; }));
    source->content = {{"UTF8_STRING", "text"}};
    source->offered = {"UTF8_STRING"};
    view->takesDrops = false;
    source->enter();
    source->position(left + 10, top + 20);
    source->drop(); // sooner than the content is here
    source->finished = -1;
    EXPECT_TRUE(until([this] { return source->finished == 0; }));
    EXPECT_THAT(log, Contains("dropped 1 2:text"));
}

TEST_F(X11DropTest, BearsSourcesThatLeaveDieOrNeverAnswer)
{
    source->content = {{"UTF8_STRING", "text"}};
    source->offered = {"UTF8_STRING"};
    source->enter();
    source->position(left + 10, top + 20);
    EXPECT_TRUE(until([this] { return saw("view dragEnter 10,20"); }));
    source->leave();
    EXPECT_TRUE(until([this] { return saw("view dragLeave 10,20"); }));
    source->position(left + 10, top + 20); // out of order
    source->drop();

    source->content.clear();
    log.clear();
    source->enter();
    source->position(left + 1, top + 2);
    EXPECT_TRUE(until([this] { return source->statuses >= 2; }));
    source->content = {{"UTF8_STRING", "again"}};
    source->enter(); // without having left
    source->position(left + 3, top + 4);
    EXPECT_TRUE(until([this] { return saw("view dragEnter 3,4"); }));
    EXPECT_FALSE(saw("view dragEnter 1,2"));
    source->die();
    EXPECT_TRUE(until([this] { return saw("view dragLeave 3,4"); }));
}

TEST_F(X11DropTest, LetsTheFrameCloseInTheMiddle)
{
    source->content = {{"UTF8_STRING", "text"}};
    source->offered = {"UTF8_STRING"};
    view->reaction = [this](const std::string& word)
    {
        if (word == "dragEnter")
            closeFrame();
    };
    source->enter();
    source->position(left + 10, top + 20);
    EXPECT_TRUE(until([this] { return frame == nullptr; }));
}
