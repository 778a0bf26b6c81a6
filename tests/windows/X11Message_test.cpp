// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/MessagePresenter.h"
#include "windows/WindowTest.h"

using namespace Tovra;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
class X11MessageTest : public WindowTest
{
protected:
    X11MessageTest()
    {
        useMessageViews();
        openFrame();
    }
    ~X11MessageTest() override
    {
        closeFrame(); // which answers what is open
        Sonvex::setMessageBoxPresenter(nullptr);
    }

    CMessageView* ask()
    {
        Sonvex::openMessageBox(frame, Sonvex::kMessageBoxYesNo, "Delete Preset", "Really?",
                               [this](int answer) { answers.push_back(answer); });
        EXPECT_TRUE(until([this] { return frame->getModalView() != nullptr; }));
        return dynamic_cast<CMessageView*>(frame->getModalView());
    }
    bool isAnswered()
    {
        return until([this] { return !answers.empty(); });
    }

    std::vector<int> answers;
};
}

TEST_F(X11MessageTest, DimsTheFrameAndAnswersTheMouse)
{
    ASSERT_TRUE(until([this] { return pixel(5, 5) == 0xFF0000; }));
    const CRect yes = ask()->buttonRect(1);
    EXPECT_TRUE(until([this] { return pixel(5, 5) != 0xFF0000 && pixel(295, 195) != 0x0000FF; }));
    log.clear();
    click(5, 5);
    click(int(yes.left) + 10, int(yes.top) + 10);
    ASSERT_TRUE(isAnswered());
    EXPECT_THAT(answers, ElementsAre(1));
    EXPECT_THAT(log, IsEmpty());
    EXPECT_TRUE(until([this] { return pixel(5, 5) == 0xFF0000; }));
}

TEST_F(X11MessageTest, TakesEveryKeyFromTheViewsAndTheHost)
{
    takeKeyboard();
    ask();
    log.clear();
    const std::size_t heard = host->lines.size();
    user("type a");
    user("key Tab F5 space");
    ASSERT_TRUE(isAnswered());
    EXPECT_THAT(answers, ElementsAre(1));
    settle();
    EXPECT_THAT(log, testing::Each(testing::Not(testing::HasSubstr("key "))));
    EXPECT_EQ(host->lines.size(), heard);
    user("key b");
    EXPECT_TRUE(until([this] { return saw("key b 0 0"); })) << "the view has the focus again";
}
