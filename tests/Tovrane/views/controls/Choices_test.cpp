// SPDX-License-Identifier: GPL-3.0-or-later
// Menus with submenus, context menus, and boxes with a text.
#include "Tovrane/platform/headless/HeadlessTextEdit.h"
#include "Tovrane/views/controls/COptionMenu.h"
#include "Tovrane/views/controls/CTextEdit.h"
#include "Tovrane/views/tree/EditLog.h"

using namespace Tovra;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
class Choices : public testing::Test
{
protected:
    Choices()
    {
        property.setMin(0.0f);
        property.setMax(10.0f);
        property.setDefaultValue(2.5f);
        property.setUnitType(Orbel::ParameterUnitType::PlainNumber);
        property.setValue(1.0f);
    }
    ~Choices() override { frame->close(); }

    HeadlessFrame& window() { return *HeadlessFrame::of(*frame.get()); }
    WindowEvents& user() { return window().events(); }
    Log edits() { return taken(host.log); }
    void click(CPoint where, long buttons = kButtonLeft, int clicks = 1)
    {
        user().press(where, buttons, clicks);
        user().release(where, buttons);
    }
    // The next menu is answered with a row of it, or of the submenu in its row.
    void answer(long row, long below = -1)
    {
        window().onMenu = [=](IMenu& menu) {
            return below < 0 ? MenuChoice{&menu, row} : MenuChoice{menu.getEntry(row)->getSubmenu(), below};
        };
    }
    // "One" and "Two", a line, a submenu with "Deep" and "Deeper", and "Three".
    COptionMenu& menu()
    {
        auto* const made = new COptionMenu({10, 10, 90, 30}, &host, 1, nullptr, CParamDisplay::kCheckStyle);
        auto* const below = new COptionMenu({0, 0, 0, 0});
        below->addEntry("Deep");
        below->addEntry("Deeper");
        made->addEntry("One");
        made->addEntry("Two");
        made->addSeparator();
        made->addEntry(below, "More");
        made->addEntry("Three");
        below->forget();
        frame->addView(made);
        return *made;
    }
    Tovra_TextEdit& box(Tovra_TextEdit::CInfo info = {})
    {
        info.rect = {10, 10, 90, 30};
        info.attachedProperty = &property;
        info.createObject();
        frame->addView(info.object);
        auto* const made = static_cast<Tovra_TextEdit*>(info.object);
        made->setListener(&host);
        return *made;
    }

    Host host;
    Orbel::ParameterProperty property;
    Kept<ReadOutFrame> frame =
        Kept<ReadOutFrame>::adopt(new ReadOutFrame(CRect(0, 0, 100, 100), nullptr, &host));
};
}

TEST_F(Choices, AMenuCountsNeitherLinesNorSubmenus)
{
    COptionMenu& shown = menu();
    shown.setAttachedProperty(&property);
    EXPECT_EQ(shown.getCurrent()->getTitle(), "Two");
    EXPECT_TRUE(shown.isCheckEntry(1));
    const Log whole{"listener begins", "host begins", "host performs 2.000000",
                    "changed",         "host ends",   "listener ends"};
    edits();
    answer(4);
    click({20, 20});
    EXPECT_EQ(property.getCurrentValue(), 2.0f);
    EXPECT_EQ(edits(), whole);
    EXPECT_FALSE(shown.isCheckEntry(1));
    EXPECT_TRUE(shown.isCheckEntry(4));
    EXPECT_EQ(shown.getCurrentIndex(true), 4);
    long number = 0;
    EXPECT_EQ(shown.getLastItemMenu(number), &shown);
    EXPECT_EQ(number, 2);

    for (const long row : {-1L, 2L, 3L, 99L}) // nothing, and what cannot be chosen
    {
        answer(row);
        click({20, 20});
        EXPECT_THAT(edits(), IsEmpty()) << row;
        EXPECT_EQ(shown.getLastItemMenu(number), nullptr);
    }
    answer(3, 1);
    click({20, 20}, kButtonRight);
    EXPECT_EQ(shown.getLastItemMenu(number), shown.getSubMenu(3));
    EXPECT_EQ(number, 1);
    click({20, 20}, kButtonMiddle);
    EXPECT_EQ(shown.getLastItemMenu(number), shown.getSubMenu(3)) << "it opened no menu";

    property.setValue(0.99f); // as a host's rounding leaves it
    EXPECT_EQ(shown.getCurrentIndex(), 1);
    property.setValue(9.0f); // none
    EXPECT_EQ(shown.getCurrentIndex(), 1);
}

// Whoever asked is kept until the answer, and gets none for a menu that was lost.
TEST_F(Choices, AContextMenuAnswersItsCaller)
{
    std::vector<std::string> heard;
    TovraContextInfo info;
    info.frame = frame.get();
    info.place = {5, 6};
    info.callback = [&](COptionMenu& menu, long number)
    { heard.push_back(menu.getEntry(menu.rowOfNumber(number))->getTitle()); };
    const auto open = [&]
    {
        const auto context = Kept<Tovra_ContextMenu>::adopt(new Tovra_ContextMenu(info));
        context->addEntry("Copy");
        context->addSeparator();
        context->addEntry("Paste");
        EXPECT_EQ(context->getMenuPosition(), CPoint(5, 6));
        EXPECT_TRUE(context->popUp());
    };
    answer(2);
    open();
    window().answerMenus();
    EXPECT_THAT(heard, ElementsAre("Paste"));
    open();
    frame->close();
    EXPECT_THAT(heard, ElementsAre("Paste"));
}

TEST_F(Choices, ATextIsTypedOnlyAndGoesToTheCaller)
{
    char memory[Orbel::kParameterTextSize] = "100%s %n";
    property.setUnitType(Orbel::ParameterUnitType::Text);
    property.setDataPointer(memory);
    std::vector<std::string> heard;
    Tovra_TextEdit::CInfo info;
    info.onText = [&](const std::string& typed) { heard.push_back(typed); };
    Tovra_TextEdit& name = box(info);
    EXPECT_EQ(name.shownText(), "100%s %n");
    user().press({20, 20}, kButtonLeft);
    user().move({20, 0}, kButtonLeft);
    user().release({20, 0}, kButtonLeft);
    EXPECT_THAT(edits(), IsEmpty());
    click({20, 20}, kButtonLeft, 2);
    window().textEdit()->type(std::string(600, 'x').c_str());
    window().textEdit()->pressReturn();
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard[0].size(), 255u);
    EXPECT_STREQ(memory, "100%s %n") << "the caller decides";
    name.setEditable(false);
    click({20, 20}, kButtonLeft, 2);
    EXPECT_EQ(window().textEdit(), nullptr);
}
