// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/views/controls/CMessageView.h"
#include "Tovrane/views/controls/MessagePresenter.h"
#include "Tovrane/views/tree/RecordingView.h"

#include <future>

using namespace Tovra;
using Sonvex::kMessageBoxOk;
using Sonvex::kMessageBoxYesNo;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace
{
class MessageTest : public HeadlessTest
{
protected:
    MessageTest()
    {
        useMessageViews();
        frame->setViewSize(CRect(0, 0, 400, 300));
        view = add("view", {0, 0, 400, 300});
        settle();
    }
    ~MessageTest() override
    {
        close(); // which answers what is open
        Sonvex::setMessageBoxPresenter(nullptr);
    }

    // Answers go to the list of answers as number * 10 + answer.
    void open(Sonvex::MessageBoxType type, int number = 0, const std::string& body = "body")
    {
        Sonvex::openMessageBox(frame.get(), type, "title", body,
                               [this, number](int answer) { answers.push_back(number * 10 + answer); });
    }
    CMessageView* shown() const { return dynamic_cast<CMessageView*>(frame->getModalView()); }

    static CPoint middle(const CRect& rect)
    {
        return CPoint(0.5 * (rect.left + rect.right), 0.5 * (rect.top + rect.bottom));
    }
    void click(CPoint where, long button = kButtonLeft)
    {
        user().move(where, 0);
        user().press(where, button);
        user().release(where, button);
    }
    void key(int virtualKey, int modifiers = 0)
    {
        TovraKeyCode code;
        code.virtualKey = std::uint8_t(virtualKey);
        code.modifiers = std::uint8_t(modifiers);
        EXPECT_EQ(user().keyDown(code), kKeyConsumed);
        user().keyUp(code);
    }
    std::uint32_t pixel(int x, int y)
    {
        IOSBitmap& picture = *frame->getFrameBitmap();
        return reinterpret_cast<std::uint32_t*>(picture.getPixelPtr() + long(picture.getRowBytes()) * y)[x];
    }

    RecordingView* view;
    std::vector<int> answers;
};
}

TEST_F(MessageTest, OpensAtTheNextIdleAndAnswersAClick)
{
    open(kMessageBoxYesNo);
    EXPECT_EQ(shown(), nullptr);
    const std::uint32_t before[] = {pixel(0, 0), pixel(399, 299)};
    frame->idle();
    ASSERT_NE(shown(), nullptr);
    EXPECT_NE(pixel(0, 0), before[0]) << "the frame is dimmed";
    EXPECT_NE(pixel(399, 299), before[1]);
    EXPECT_THAT(shown()->shownLines(), ElementsAre("body"));

    log.clear();
    const CRect no = shown()->buttonRect(0), yes = shown()->buttonRect(1);
    click({1, 1});
    click(middle(shown()->boxRect()));
    click(middle(yes), kButtonRight);
    user().press(middle(yes), kButtonLeft);
    user().release(middle(no), kButtonLeft);
    user().wheel({1, 1}, 0, 1, 0);
    EXPECT_THAT(answers, IsEmpty());
    EXPECT_THAT(log, IsEmpty()) << "nothing reaches the views below";
    click(middle(yes));
    EXPECT_THAT(answers, ElementsAre(1));
    EXPECT_EQ(shown(), nullptr);
    click({1, 1});
    EXPECT_THAT(log, Contains("view down 1,1 2"));
}

TEST_F(MessageTest, ShowsWhereTheMouseAndTheFocusAre)
{
    open(kMessageBoxYesNo);
    frame->idle();
    const CRect yes = shown()->buttonRect(1);
    const auto look = [&]
    {
        frame->idle();
        return std::pair(pixel(int(yes.left) + 1, int(yes.top) + 10),
                         pixel(int(yes.left) + 6, int(yes.top) + 5));
    };
    const auto plain = look();
    user().move(middle(yes), 0);
    const auto hovered = look();
    EXPECT_NE(hovered.second, plain.second);
    user().press(middle(yes), kButtonLeft);
    const auto pressed = look();
    EXPECT_NE(pressed.second, hovered.second);
    EXPECT_NE(pressed.first, hovered.first) << "a click takes the focus";
    user().move({1, 1}, kButtonLeft);
    user().release({1, 1}, kButtonLeft);
    EXPECT_EQ(look().second, plain.second);
    EXPECT_THAT(answers, IsEmpty());
}

TEST_F(MessageTest, AnswersKeysAndGivesTheFocusBack)
{
    const struct
    {
        Sonvex::MessageBoxType type;
        std::vector<int> keys;
        int answer;
    } cases[] = {{kMessageBoxOk, {kVirtualReturn}, 1},
                 {kMessageBoxOk, {kVirtualSpace}, 1},
                 {kMessageBoxOk, {kVirtualTab, kVirtualKeypadEnter}, 1},
                 {kMessageBoxOk, {kVirtualEscape}, 0},
                 {kMessageBoxYesNo, {kVirtualReturn}, 0}, // a key that was meant for something else
                 {kMessageBoxYesNo, {kVirtualTab, kVirtualReturn}, 1},
                 {kMessageBoxYesNo, {kVirtualTab, kVirtualTab, kVirtualReturn}, 0},
                 {kMessageBoxYesNo, {kVirtualLeft, kVirtualSpace}, 1},
                 {kMessageBoxYesNo, {kVirtualDown, kVirtualF1, kVirtualSpace}, 1},
                 {kMessageBoxYesNo, {kVirtualRight, kVirtualEscape}, 0}};
    frame->setFocusView(view);
    for (const auto& c : cases)
    {
        open(c.type);
        frame->idle();
        EXPECT_EQ(frame->getFocusView(), shown());
        log.clear();
        for (const int each : c.keys)
            key(each);
        EXPECT_THAT(std::exchange(answers, {}), ElementsAre(c.answer));
        EXPECT_EQ(frame->getFocusView(), view);
        EXPECT_THAT(log, Each(Not(HasSubstr("key ")))) << "keys reach nobody else";
    }
}

TEST_F(MessageTest, ComesOneAfterTheOtherAndAfterAnyModalView)
{
    const auto modal = Kept<RecordingView>::adopt(new RecordingView(log, "modal", {0, 0, 9, 9}));
    frame->setModalView(modal.get());
    for (int i = 1; i <= 3; ++i)
        open(kMessageBoxOk, i);
    frame->idle();
    open(kMessageBoxOk, 4);
    frame->idle();
    EXPECT_EQ(frame->getModalView(), modal.get());
    frame->setModalView(nullptr);
    for (int i = 1; i <= 4; ++i)
    {
        frame->idle();
        ASSERT_NE(shown(), nullptr) << i;
        key(kVirtualReturn);
    }
    EXPECT_THAT(answers, ElementsAre(11, 21, 31, 41));
}

// Each closes the frame with one message open and one waiting.
TEST_F(MessageTest, AFrameThatGoesAnswersNoOnce)
{
    const std::function<void()> ways[] = {
        [this] { close(); }, [this] { frame->removeAll(true); }, [this] { frame->setModalView(nullptr); },
        [this]
        {
            const auto other = [this](int) { open(kMessageBoxOk, 7); }; // an answer that asks again
            Sonvex::openMessageBox(frame.get(), kMessageBoxOk, "", "", other);
            close();
        }};
    for (const auto& way : ways)
    {
        close();
        frame = Kept<CFrame>::adopt(new CFrame(CRect(0, 0, 400, 300), nullptr, nullptr));
        open(kMessageBoxYesNo, 1);
        open(kMessageBoxYesNo, 2);
        frame->idle();
        way();
        close();
        ASSERT_THAT(answers, testing::IsSupersetOf({10, 20}));
        EXPECT_EQ(answers.size(), &way == std::end(ways) - 1 ? 3u : 2u);
        answers.clear();
    }
    open(kMessageBoxOk, 3);
    EXPECT_THAT(answers, ElementsAre(30)) << "there is no frame any more";
}

TEST_F(MessageTest, EndsWhatTheMouseHolds)
{
    view->answers["down"] = kMouseHandled;
    view->reaction = [this](const std::string& word)
    {
        if (word == "down")
            open(kMessageBoxOk);
    };
    user().press({5, 5}, kButtonLeft);
    EXPECT_NE(shown(), nullptr) << "without a window a message opens after the event";
    EXPECT_THAT(taken(log), testing::IsSupersetOf({"view down 5,5 2", "view up 5,5 2"}));
    user().release({5, 5}, kButtonLeft);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(MessageTest, FitsTheFrameWhateverTheTextIs)
{
    const std::string bodies[] = {"", std::string(431, '\n') + "x", std::string(431, 'W'), "100%s %n"};
    for (const std::string& body : bodies)
        for (const CRect& size : {CRect(0, 0, 400, 300), CRect(0, 0, 220, 120), CRect(0, 0, 600, 350)})
        {
            open(kMessageBoxYesNo, 0, body);
            frame->idle();
            frame->setViewSize(size);
            frame->idle();
            ASSERT_NE(shown(), nullptr);
            EXPECT_EQ(shown()->getViewSize(), size);
            CRect box = shown()->boxRect();
            EXPECT_EQ(box.bound(size), shown()->boxRect()) << body.size() << " in " << size.right;
            for (int i = 0; i < 2; ++i)
            {
                CRect button = shown()->buttonRect(i);
                EXPECT_EQ(button.bound(box), shown()->buttonRect(i));
            }
            key(kVirtualEscape);
        }
}

TEST_F(MessageTest, AHeadlessFrameAnswersForItsUser)
{
    std::vector<std::string> seen;
    window().onMessage = [&](const Message& message) -> std::optional<int>
    {
        seen.push_back(message.title + "|" + message.body);
        return message.type == kMessageBoxYesNo ? std::optional(1) : std::nullopt;
    };
    open(kMessageBoxYesNo, 1, "100%s");
    EXPECT_THAT(answers, IsEmpty()) << "later";
    frame->idle();
    EXPECT_THAT(answers, ElementsAre(11));
    open(kMessageBoxOk, 2, "shown");
    frame->idle();
    EXPECT_THAT(seen, ElementsAre("title|100%s", "title|shown"));
    EXPECT_NE(shown(), nullptr);
}

// Workers ask while the window thread idles, until the frame closes under those that wait.
TEST_F(MessageTest, AWorkerWaitsUntilTheUserOrTheEndOfTheFrame)
{
    CFrame* const asked = frame.get();
    const auto ask = [asked]
    { return Sonvex::MessageBoxModal(asked, kMessageBoxYesNo, "worker", "%s", "question"); };
    std::vector<std::future<int>> workers;
    for (int i = 0; i < 4; ++i)
        workers.push_back(std::async(std::launch::async, ask));
    EXPECT_EQ(Sonvex::MessageBoxModal(asked, kMessageBoxYesNo, "this thread", "must not wait"), 0);

    for (int answered = 0; answered < 3;)
    {
        frame->idle();
        if (shown() == nullptr)
            continue;
        shown()->answer(answered == 1 ? 1 : 0);
        ++answered;
    }
    while (shown() == nullptr)
        frame->idle();
    close();
    int sum = 0;
    for (auto& worker : workers)
        sum += worker.get();
    EXPECT_EQ(sum, 1);
    EXPECT_EQ(ask(), 0) << "the frame has gone";
}
