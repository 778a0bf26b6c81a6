#include "Tovrane/CDragContainer.h"
#include "Tovrane/CMenuItem.h"
#include "Tovrane/IOptionMenu.h"
#include "Tovrane/ITextEditCallback.h"
#include "Tovrane/RecordingView.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/platform/headless/HeadlessTextEdit.h"

#include <memory>

using namespace Tovra;
using testing::ElementsAre;

namespace
{
using HeadlessWindow = HeadlessTest;

// A menu of plain items.
class ListMenu final : public CBaseObject, public IMenu
{
public:
    void add(CMenuItem* item) { items.push_back(Kept<CMenuItem>::adopt(item)); }

    long getNbEntries() const override { return long(items.size()); }
    CMenuItem* getEntry(long index) const override
    {
        return index >= 0 && index < getNbEntries() ? items[size_t(index)].get() : nullptr;
    }
    long getPrefixNumbers() const override { return digits; }
    CPoint getMenuPosition() const override { return {}; }
    CBaseObject* countedObject() override { return this; }

    long digits = 0;

private:
    std::vector<Kept<CMenuItem>> items;
};

// A view's side of a text field, which ends it as soon as it looses the focus.
class Typist : public ITextEditCallback
{
public:
    CColor textEditGetBackColor() const override { return kBlackCColor; }
    CColor textEditGetFontColor() const override { return kWhiteCColor; }
    CRect textEditGetSize() const override { return {10, 10, 60, 30}; }
    CRect textEditGetVisibleSize() const override { return {0, 0, 40, 100}; }
    void textEditLooseFocus(bool byReturn) override
    {
        ends.push_back(byReturn ? std::string("return ") + field->getText() : "cancel");
        field.reset();
    }
    long textEditOnKeyDown(const TovraKeyCode&) override { return answer; }
    void convertPluginToWorld(CRect&) const override {}

    std::unique_ptr<IOSTextEdit> field;
    long answer = kKeyNotHandled;
    Log ends;
};
}

TEST_F(HeadlessWindow, TurnsEventsIntoMouseWords)
{
    add("view", {0, 0, 200, 100})->answers = {{"down", kMouseHandled}, {"move", kMouseHandled}};
    log.clear();
    for (int number = -1; number < 7; ++number)
        log.push_back(std::to_string(mouseButtonBit(number)));
    EXPECT_THAT(taken(log), ElementsAre("0", "2", "8", "4", "4", "256", "512", "0"));

    EXPECT_TRUE(user().press({5, 6}, kButtonLeft | kModShift));
    EXPECT_TRUE(user().release({5, 6}, kButtonLeft | kModShift));
    EXPECT_TRUE(user().press({5, 6}, kButtonLeft, 2));
    EXPECT_TRUE(user().release({5, 6}, kButtonLeft | kDoubleClick));
    EXPECT_THAT(taken(log),
                ElementsAre("view down 5,6 18", "view up 5,6 18", "view down 5,6 1026", "view up 5,6 2"));
    EXPECT_TRUE(user().wheel({5, 6}, 0.5, -1, 0));
    EXPECT_TRUE(user().wheel({5, 6}, 0, 2, 0));
    EXPECT_THAT(taken(log), ElementsAre("view axisX", "view wheel 5,6 -0.5", "view axisY",
                                        "view wheel 5,6 -1", "view axisY", "view wheel 5,6 2"));
}

TEST_F(HeadlessWindow, LateEventsDoNothing)
{
    const Kept<HeadlessFrame> survives(&window());
    const Kept<IOptionMenu> menu = Kept<IOptionMenu>::adopt(frame->createOptionMenu());
    Typist typist;
    typist.field.reset(frame->createOSTextEdit(&typist, nullptr));
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
    survives->paint();
    typist.field->updateSize();

    ListMenu empty;
    survives->onMenu = [](IMenu&) -> MenuChoice { throw 0; };
    EXPECT_EQ(menu.get()->openMenu(empty).menu, nullptr);
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
    Typist typist;
    const auto open = [&]
    {
        typist.field.reset(frame->createOSTextEdit(&typist, nullptr));
        typist.field->setText("before");
        return window().textEdit();
    };
    HeadlessTextEdit* field = open();
    EXPECT_EQ(field->place(), CRect(10, 10, 40, 30));
    EXPECT_TRUE(field->isAllSelected());
    field->type("after");
    field->type(" all");
    typist.answer = kKeyConsumed;
    field->pressReturn();
    typist.answer = kKeyNotHandled;
    field->pressReturn();
    EXPECT_EQ(window().textEdit(), nullptr);
    open()->pressEscape();
    EXPECT_THAT(typist.ends, ElementsAre("return after all", "cancel"));

    open()->setText((std::string(254, 'x') + "\xC3\xA4").c_str()); // 256 bytes: the last character goes whole
    EXPECT_EQ(std::string(typist.field->getText()), std::string(254, 'x'));
    EXPECT_EQ(frame->createOSTextEdit(nullptr, nullptr), nullptr);
}

TEST_F(HeadlessWindow, AMenuAnswersOnlyWhatCanBeChosen)
{
    auto* const submenu = new ListMenu;
    submenu->add(new CMenuItem("deep"));
    ListMenu menu;
    menu.digits = 2;
    menu.add(new CMenuItem("Save 100%s"));
    menu.add(new CMenuItem("off", CMenuItem::kDisabled));
    menu.add(new CMenuItem("-", CMenuItem::kSeparator));
    menu.add(new CMenuItem("Heading", CMenuItem::kTitle));
    menu.add(new CMenuItem("more"));
    menu.getEntry(4)->setSubmenu(submenu);
    submenu->forget(); // the item holds it
    menu.getEntry(0)->setChecked(true);
    EXPECT_TRUE(menu.getEntry(0)->isChecked() && menu.getEntry(0)->isEnabled());

    const auto popUp = Kept<IOptionMenu>::adopt(frame->createOptionMenu());
    EXPECT_EQ(popUp.get()->openMenu(menu).index, -1) << "nobody is there";
    const struct
    {
        IMenu* menu;
        long index;
        bool can;
    } cases[] = {{&menu, 0, true},  {&menu, 1, false}, {&menu, 2, false},  {&menu, 3, false},
                 {&menu, 4, false}, {&menu, 5, false}, {submenu, 0, true}, {nullptr, 0, false}};
    for (const auto& c : cases)
    {
        window().onMenu = [&](IMenu&) { return MenuChoice{c.menu, c.index}; };
        const MenuChoice choice = popUp.get()->openMenu(menu);
        EXPECT_EQ(choice.menu, c.can ? c.menu : nullptr) << c.index;
        EXPECT_EQ(choice.index, c.can ? c.index : -1);
    }
    const char* const titles[] = {"Save 100%s", "1 Save 100%s", "01 Save 100%s", "001 Save 100%s",
                                  "Save 100%s"};
    for (menu.digits = 0; menu.digits < 5; ++menu.digits)
        EXPECT_EQ(shownTitle(menu, 0), titles[menu.digits]);
    EXPECT_EQ(shownTitle(menu, 99), "");

    // A copy of an item shares its submenu.
    auto copy = Kept<CMenuItem>::adopt(new CMenuItem(*menu.getEntry(4)));
    EXPECT_EQ(submenu->getReferenceCount(), 2);
    copy.reset();
    EXPECT_EQ(submenu->getReferenceCount(), 1);
}

TEST_F(HeadlessWindow, AFilePanelAnswersWhatTheUserPicks)
{
    const auto panel = Kept<IFileSelector>::adopt(frame->createFileSelector());
    FileSelectorOptions options;
    options.title = "Save Preset as...";
    EXPECT_TRUE(panel.get()->run(options).empty());
    window().onFileSelector = [](const FileSelectorOptions& asked)
    { return std::vector<std::string>{asked.title}; };
    EXPECT_THAT(panel.get()->run(options), ElementsAre("Save Preset as..."));
}

TEST(CDropContent, HandsOutATextOrFilesInTheirOrder)
{
    struct Item
    {
        std::string content;
        long size, type;
        bool operator==(const Item&) const = default;
    };
    const auto walk = [](CDragContainer& drag)
    {
        std::vector<Item> items;
        long size = -7, type = -7;
        for (void* data = drag.first(size, type); data != nullptr; data = drag.next(size, type))
            items.push_back({static_cast<const char*>(data), size, type});
        items.push_back({"end", size, type});
        return items;
    };
    CDropContent files("", {"/", "/no/such/file", "c"});
    EXPECT_EQ(files.getCount(), 3);
    const std::vector<Item> wanted = {{"/", 1, 0}, {"/no/such/file", 13, 0}, {"c", 1, 0}, {"end", 0, -2}};
    EXPECT_EQ(walk(files), wanted);
    EXPECT_EQ(walk(files), wanted) << "from the first again";
    EXPECT_EQ(files.getType(0), 0);
    EXPECT_EQ(files.getType(1), -1);
    EXPECT_EQ(files.getType(3), -1);

    CDropContent text("text", {"/"}); // the text wins
    EXPECT_EQ(walk(text), (std::vector<Item>{{"text", 4, 2}, {"end", 0, -2}}));
    EXPECT_EQ(text.getType(0), 2);
    EXPECT_EQ(text.getType(1), -2);

    CDragContainer nothing;
    EXPECT_EQ(walk(nothing), (std::vector<Item>{{"end", 0, -2}}));
    EXPECT_EQ(nothing.getType(0), -1);
    EXPECT_EQ(nothing.getCount(), 0);
}
