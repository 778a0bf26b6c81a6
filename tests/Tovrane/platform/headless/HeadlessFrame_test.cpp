// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/IOSBitmap.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/platform/headless/HeadlessTextEdit.h"
#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/views/tree/RecordingView.h"
#include "Tovrane/window/CDragContainer.h"
#include "Tovrane/window/IOptionMenu.h"
#include "windows/FieldOwner.h"
#include "windows/PlainMenu.h"

#include <memory>

using namespace Tovra;
using testing::ElementsAre;

using HeadlessWindow = HeadlessTest;

TEST_F(HeadlessWindow, LateEventsDoNothing)
{
    const Kept<HeadlessFrame> survives(&window());
    const Kept<IOptionMenu> menu = Kept<IOptionMenu>::adopt(frame->createOptionMenu());
    FieldOwner owner;
    const std::unique_ptr<IOSTextEdit> field(frame->createOSTextEdit(&owner, nullptr));
    frame->setCursor(kCursorHand);
    EXPECT_EQ(survives->cursor(), kCursorHand);
    close();
    EXPECT_EQ(survives->cursor(), kCursorDefault);

    WindowEvents& events = survives->events();
    const auto drag = Kept<CDropContent>::adopt(new CDropContent("text", {}));
    EXPECT_FALSE(events.isConnected());
    EXPECT_FALSE(events.press({1, 1}, kButtonLeft) || events.release({1, 1}, kButtonLeft) ||
                 events.move({1, 1}, 0) || events.wheel({1, 1}, 1, 1, 0));
    EXPECT_FALSE(events.dragEnter(drag.get(), {1, 1}) || events.drop(drag.get(), {1, 1}));
    EXPECT_EQ(events.keyDown({}), kKeyNotHandled);
    field->updateSize();

    PlainMenu empty;
    survives->onMenu = [](IMenu&) -> MenuChoice { throw 0; };
    int answers = 0;
    menu->openMenu(empty, [&](const MenuChoice& choice) { answers += choice.index == -1 ? 1 : 100; });
    EXPECT_EQ(answers, 1) << "at once";
}

// The frame goes in the midst of the first of two events.
TEST_F(HeadlessWindow, AnEventMayCloseTheFrame)
{
    RecordingView* const view = add("view", {0, 0, 200, 100});
    const Kept<HeadlessFrame> survives(&window());
    view->answers["wheel"] = false;
    view->reaction = [&](const std::string&) { close(); };
    survives->events().wheel({5, 6}, 1, 1, 0);
    EXPECT_FALSE(survives->events().isConnected());
    EXPECT_THAT(taken(log), testing::Contains("view gone"));
}

TEST_F(HeadlessWindow, ATextFieldEndsByReturnOrEscape)
{
    FieldOwner owner;
    owner.visible = {0, 0, 100, 100};
    std::unique_ptr<IOSTextEdit> field;
    owner.onEnd = [&] { field.reset(); }; // the view ends it as soon as it looses the focus
    const auto open = [&]
    {
        field.reset(frame->createOSTextEdit(&owner, nullptr));
        field->setText("before");
        return window().textEdit();
    };
    HeadlessTextEdit* const first = open();
    EXPECT_EQ(first->place(), CRect(50, 40, 100, 60));
    first->type("after");
    first->type(" all");
    EXPECT_STREQ(field->getText(), "after all");
    first->pressReturn();
    EXPECT_EQ(owner.ended, "return");
    EXPECT_EQ(window().textEdit(), nullptr);
    open()->pressEscape();
    EXPECT_EQ(owner.ended, "escape");

    open()->setText((std::string(254, 'x') + "\xC3\xA4").c_str()); // 256 bytes: the last character goes whole
    EXPECT_EQ(std::string(field->getText()), std::string(254, 'x'));
    EXPECT_EQ(frame->createOSTextEdit(nullptr, nullptr), nullptr);
    owner.onEnd = nullptr;
}

// A key is the field's first, then the view's with the focus; what nobody takes is the host's.
TEST_F(HeadlessWindow, KeysGoToTheTextFieldFirst)
{
    RecordingView* const view = add("view", {0, 0, 200, 100});
    view->answers["key"] = kKeyNotHandled;
    frame->setFocusView(view);
    FieldOwner owner;
    std::unique_ptr<IOSTextEdit> field(frame->createOSTextEdit(&owner, nullptr));
    owner.onEnd = [&] { field.reset(); };
    field->setText("gain");
    const struct
    {
        int key; // a character, or minus a VirtualKey
        int modifiers;
        const char* text;
    } strokes[] = {{-kVirtualEnd, 0, "gain"},
                   {'s', 0, "gains"},
                   {-kVirtualBackspace, 0, "gain"},
                   {-kVirtualHome, kKeyShift, "gain"},
                   {'x', 0, "x"},
                   {-kVirtualSpace, 0, "x "},
                   {'a', kKeyCommand, "x "},
                   {-kVirtualDelete, 0, ""},
                   {0xE4, 0, "\xC3\xA4"}};
    for (const auto& stroke : strokes)
    {
        TovraKeyCode code;
        code.character = stroke.key > 0 ? stroke.key : 0;
        code.virtualKey = std::uint8_t(stroke.key < 0 ? -stroke.key : 0);
        code.modifiers = std::uint8_t(stroke.modifiers);
        EXPECT_EQ(window().keyDown(code, stroke.modifiers == kKeyCommand ? "" : typedBy(code)), kKeyConsumed);
        EXPECT_STREQ(field->getText(), stroke.text);
    }
    TovraKeyCode code;
    code.virtualKey = kVirtualF1 + 1;
    EXPECT_THAT(taken(log), testing::IsEmpty());
    EXPECT_EQ(window().keyDown(code, ""), kKeyNotHandled);
    EXPECT_THAT(taken(log), testing::Contains("view key"));
    code.virtualKey = kVirtualReturn;
    EXPECT_EQ(window().keyDown(code, ""), kKeyConsumed);
    EXPECT_EQ(owner.ended, "return");
    EXPECT_EQ(field, nullptr);
}

// It reaches beyond the frame's right edge.
TEST_F(HeadlessWindow, WhatIsShownHasTheOpenTextFieldOverThePicture)
{
    frame->setBackgroundColor(kRedCColor);
    frame->idle();
    FieldOwner owner;
    owner.visible = {60, 40, 210, 60};
    const std::unique_ptr<IOSTextEdit> field(frame->createOSTextEdit(&owner, nullptr));
    const auto shown = window().shownPicture();
    const auto blue = [&](unsigned x, unsigned y)
    { return int(shown->getPixelPtr()[y * unsigned(shown->getRowBytes()) + 4 * x]); };
    for (const unsigned x : {59U, 60U, 150U, 199U})
        for (const unsigned y : {39U, 40U, 59U, 60U})
            EXPECT_EQ(blue(x, y), x >= 60 && y >= 40 && y < 60 ? 33 : 0) << x << ", " << y;
    field->setText("name");
    const auto typed = window().shownPicture();
    EXPECT_NE(std::string(reinterpret_cast<char*>(shown->getPixelPtr()), shown->getTotalBytes()),
              std::string(reinterpret_cast<char*>(typed->getPixelPtr()), typed->getTotalBytes()));
}

TEST_F(HeadlessWindow, AMenuAnswersOnlyWhatCanBeChosen)
{
    PlainMenu menu;
    menu.add("Save 100%s", 0);
    menu.add("off", CMenuItem::kDisabled);
    menu.add("-", CMenuItem::kSeparator);
    menu.add("Heading", CMenuItem::kTitle);
    PlainMenu& submenu = menu.addSubmenu("more");
    submenu.add("deep", 0);

    const auto popUp = Kept<IOptionMenu>::adopt(frame->createOptionMenu());
    MenuChoice choice{nullptr, -7};
    const auto keep = [&](const MenuChoice& chosen) { choice = chosen; };
    popUp->openMenu(menu, keep);
    EXPECT_EQ(choice.index, -7) << "it answers later";
    EXPECT_EQ(menu.countedObject()->getReferenceCount(), 2) << "and keeps the menu until then";
    window().answerMenus();
    EXPECT_EQ(choice.index, -1) << "nobody is there";
    const struct
    {
        IMenu* menu;
        long index;
        bool can;
    } cases[] = {{&menu, 0, true},  {&menu, 1, false}, {&menu, 2, false},   {&menu, 3, false},
                 {&menu, 4, false}, {&menu, 5, false}, {&submenu, 0, true}, {nullptr, 0, false}};
    for (const auto& c : cases)
    {
        window().onMenu = [&](IMenu&) { return MenuChoice{c.menu, c.index}; };
        popUp->openMenu(menu, keep);
        window().answerMenus();
        EXPECT_EQ(choice.menu, c.can ? c.menu : nullptr) << c.index;
        EXPECT_EQ(choice.index, c.can ? c.index : -1);
    }

    const char* const titles[] = {"Save 100%s", "1 Save 100%s", "01 Save 100%s", "001 Save 100%s",
                                  "Save 100%s"};
    for (menu.digits = 0; menu.digits < 5; ++menu.digits)
        EXPECT_EQ(shownTitle(menu, 0), titles[menu.digits]);

    // A copy of an item shares its submenu.
    const auto holders = submenu.countedObject()->getReferenceCount();
    auto copy = Kept<CMenuItem>::adopt(new CMenuItem(*menu.getEntry(4)));
    EXPECT_EQ(submenu.countedObject()->getReferenceCount(), holders + 1);
    copy.reset();
    EXPECT_EQ(submenu.countedObject()->getReferenceCount(), holders);
}

// The view that opens it gets the release of its press first, and has forgotten the menu's object.
TEST_F(HeadlessWindow, AMenuAnswersAfterTheEventThatOpenedIt)
{
    RecordingView* const view = add("view", {0, 0, 200, 100});
    view->answers["down"] = kMouseHandled;
    PlainMenu menu;
    menu.add("One", 0);
    window().onMenu = [&](IMenu& shown) { return MenuChoice{&shown, 0}; };
    int openings = 0;
    const std::function<void()> open = [&]
    {
        log.push_back("open");
        Kept<IOptionMenu>::adopt(frame->createOptionMenu())
            ->openMenu(menu,
                       [&](const MenuChoice& choice)
                       {
                           log.push_back("chosen " + std::to_string(choice.index));
                           if (++openings < 2)
                               open();
                       });
    };
    view->reaction = [&](const std::string& word) { return word == "down" ? open() : void(); };
    window().events().press({5, 6}, kButtonLeft);
    EXPECT_THAT(taken(log),
                ElementsAre("view down 5,6 2", "open", "view up 5,6 2", "chosen 0", "open", "chosen 0"));
    view->reaction = nullptr;
    open();
    close();
    EXPECT_THAT(taken(log), ElementsAre("open", "chosen -1", "view gone")) << "it ends with its frame";
}

TEST_F(HeadlessWindow, AFilePanelAnswersAfterTheEventAndOnce)
{
    using Paths = std::vector<std::string>;
    std::vector<Paths> answers;
    std::vector<std::string> titles;
    Kept<IFileSelector> panel;
    const auto open = [&](const char* title)
    {
        panel = Kept<IFileSelector>::adopt(frame->createFileSelector());
        panel->run({FileSelectorOptions::saveFile, title, {}, "", ""},
                   [&](const Paths& paths) { answers.push_back(paths); });
    };
    window().onFileSelector = [&](const FileSelectorOptions& options)
    {
        titles.push_back(options.title);
        return Paths{"/" + options.title};
    };
    RecordingView* const view = add("view", {0, 0, 200, 100});
    view->reaction = [&](const std::string& word)
    {
        if (word == "down")
            open("asked");
        EXPECT_THAT(answers, testing::IsEmpty()) << "within " << word;
    };
    user().press({5, 5}, kButtonLeft);
    EXPECT_THAT(answers, ElementsAre(Paths{"/asked"}));
    view->reaction = nullptr;
    open("cancelled");
    panel->cancel();
    window().answerPanels();
    open("waiting");
    open("second");
    EXPECT_THAT(answers, ElementsAre(Paths{"/asked"}, Paths{}, Paths{})) << "one at a time";
    const auto late = Kept<IFileSelector>::adopt(frame->createFileSelector());
    close();
    late->run({}, [&](const Paths& paths) { answers.push_back(paths); });
    EXPECT_THAT(answers, ElementsAre(Paths{"/asked"}, Paths{}, Paths{}, Paths{}, Paths{}));
    EXPECT_THAT(titles, ElementsAre("asked"));
}

// What the items are is seen in the drops on windows.
TEST(CDropContent, BeginsAnewAndEndsWithATypeOfItsOwn)
{
    CDropContent files("", {"/", "/no/such/file"});
    long size = -7, type = -7;
    for (int turn = 0; turn < 2; ++turn)
    {
        EXPECT_STREQ(static_cast<const char*>(files.first(size, type)), "/");
        EXPECT_STREQ(static_cast<const char*>(files.next(size, type)), "/no/such/file");
        EXPECT_EQ(files.next(size, type), nullptr);
        EXPECT_EQ(size, 0);
        EXPECT_EQ(type, -2);
    }
    EXPECT_EQ(files.getType(0), 0);
    EXPECT_EQ(files.getType(1), -1) << "no such file";
    EXPECT_EQ(CDropContent("text", {"/"}).getType(1), -2) << "the text wins";
    CDragContainer nothing;
    EXPECT_EQ(nothing.first(size, type), nullptr);
    EXPECT_EQ(nothing.getType(0), -1);
}
