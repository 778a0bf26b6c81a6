// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/FieldOwner.h"
#include "windows/OtherProgram.h"
#include "windows/WindowTest.h"

using namespace Tovra;
using testing::Contains;

namespace
{
// Another program that drags its content over the frame.
class DragSource : public OtherProgram
{
public:
    explicit DragSource(xcb_window_t over) : target(over) {}

    std::vector<std::string> offered;

    void enter()
    {
        own(server->atom(X11Atom::dndSelection));
        std::vector<xcb_atom_t> forms;
        for (const std::string& name : offered)
            forms.push_back(server->atomOfName(name));
        xcb_change_property(c(), XCB_PROP_MODE_REPLACE, window->id(), server->atom(X11Atom::dndTypeList),
                            XCB_ATOM_ATOM, 32, std::uint32_t(forms.size()), forms.data());
        const bool isLong = forms.size() > 3;
        forms.resize(3);
        tell(X11Atom::dndEnter, {(5u << 24) | (isLong ? 1u : 0u), forms[0], forms[1], forms[2]});
    }
    void position(std::uint32_t x, std::uint32_t y)
    {
        tell(X11Atom::dndPosition, {0, x << 16 | y, XCB_CURRENT_TIME, server->atom(X11Atom::dndActionCopy)});
    }
    void leave() { tell(X11Atom::dndLeave, {}); }
    void drop() { tell(X11Atom::dndDrop, {0, XCB_CURRENT_TIME}); }

    int statuses = 0;
    bool isAccepted = false;
    int finished = -1; // 1: the drop was taken

private:
    void tell(X11Atom type, std::vector<std::uint32_t> words)
    {
        words.insert(words.begin(), window->id());
        message(target, type, words);
    }

    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override
    {
        OtherProgram::handleEvent(type, event);
        if (type != XCB_CLIENT_MESSAGE)
            return;
        const auto& answer = as<xcb_client_message_event_t>(event);
        const bool isYes = (answer.data.data32[1] & 1) != 0;
        if (answer.type == server->atom(X11Atom::dndStatus))
        {
            ++statuses;
            isAccepted = isYes;
        }
        else if (answer.type == server->atom(X11Atom::dndFinished))
            finished = isYes ? 1 : 0;
    }

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
        {{{files, "file:///a\r\nfile:///b%20c\r\n"}}, "2 0:/a 0:/b c"},
        {{{files, "file:///a\r\n"}, {utf8, "/a\n"}}, "1 0:/a"},
        {{{files, "file:///a\r\n"}, {utf8, "a text"}}, "1 2:a text"},
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

// To listen to such a "source" for its end would take the window's own events away.
TEST_F(X11DropTest, IsNotMadeDeafByADragFromItself)
{
    FieldOwner callback;
    const std::unique_ptr<IOSTextEdit> field(window().createPlatformTextEdit(frame, &callback, view));
    field->setText("");
    xcb_connection_t* c = observer->xcb();
    const X11Reply<xcb_query_tree_reply_t> tree{
        xcb_query_tree_reply(c, xcb_query_tree(c, window().windowId()), nullptr)};
    ASSERT_EQ(xcb_query_tree_children_length(tree.get()), 1);
    for (const xcb_window_t from : {window().windowId(), xcb_query_tree_children(tree.get())[0],
                                    observer->screen().root, xcb_window_t(0)})
    {
        source->message(window().windowId(), X11Atom::dndEnter, {from, 5u << 24, 0, 0, 0});
        source->message(window().windowId(), X11Atom::dndLeave, {from});
    }
    settle();
    click(60, 50); // the field, which moves the caret
    user("key a");
    EXPECT_TRUE(until([&] { return field->getText() == std::string("a"); }));
    click(10, 10);
    EXPECT_TRUE(until([this] { return saw("view up 10,10 2"); }));
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
