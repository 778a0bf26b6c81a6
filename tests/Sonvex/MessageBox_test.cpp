// SPDX-License-Identifier: GPL-3.0-or-later
#include "Sonvex/MessageBox.h"

#include <future>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace Sonvex;
using testing::ElementsAre;

namespace
{
// Shows nothing, and answers when the test does.
class Presenter final : public IMessageBoxPresenter
{
public:
    Presenter() { setMessageBoxPresenter(this); }
    ~Presenter() { setMessageBoxPresenter(nullptr); }
    void open(Tovra::CFrame*, MessageBoxType, const std::string& shownTitle, const std::string& shownBody,
              MessageBoxDone called) override
    {
        title = shownTitle;
        body = shownBody;
        done = std::move(called);
        if (onOpen)
            onOpen();
    }
    bool isWindowThread() const override { return onWindowThread; }

    std::string title, body;
    MessageBoxDone done;
    std::function<void()> onOpen;
    bool onWindowThread = true;
};
}

TEST(MessageBox, ShowsTextsAsTheyStandAndFormatsWithArguments)
{
    Presenter presenter;
    MessageBoxModal(nullptr, kMessageBoxOk, "100%s", "5% %s");
    EXPECT_EQ(presenter.title, "100%s");
    EXPECT_EQ(presenter.body, "5% %s");
    MessageBoxModal(nullptr, kMessageBoxOk, "title", "File %s %i", "%d", 2);
    EXPECT_EQ(presenter.body, "File %d 2");
    EXPECT_EQ(formatMessage("%s, %i", "a", 7), "a, 7");

    const std::string longBody = std::string(430, 'x') + "\xC3\xA4";
    MessageBoxModal(nullptr, kMessageBoxOk, nullptr, "%s", longBody.c_str());
    EXPECT_EQ(presenter.body.size(), 430u);
    openMessageBox(nullptr, kMessageBoxOk, nullptr, longBody, nullptr);
    EXPECT_EQ(presenter.body.size(), 430u) << "no half character";
}

TEST(MessageBox, AnswersExactlyOnceAlsoWhereNobodyAnswers)
{
    std::vector<int> answers;
    const auto ask = [&]
    { openMessageBox(nullptr, kMessageBoxYesNo, "", "", [&](int answer) { answers.push_back(answer); }); };
    ask();
    EXPECT_THAT(answers, ElementsAre(0)) << "there is no presenter";
    Presenter presenter;
    ask();
    EXPECT_THAT(answers, ElementsAre(0)) << "not yet";
    presenter.done(1);
    presenter.done(1);
    EXPECT_THAT(answers, ElementsAre(0, 1));
    ask();
    presenter.done = nullptr;
    EXPECT_THAT(answers, ElementsAre(0, 1, 0)) << "it was closed";
}

TEST(MessageBox, AWorkerWaitsForTheAnswerAndTheWindowThreadNever)
{
    EXPECT_EQ(MessageBoxModal(nullptr, kMessageBoxYesNo, "title", "%s", "body"), 0) << "nobody to ask";
    Presenter presenter;
    EXPECT_EQ(MessageBoxModal(nullptr, kMessageBoxOk, "notice", ""), 0);
    EXPECT_EQ(presenter.title, "notice");
    EXPECT_EQ(MessageBoxModal(nullptr, kMessageBoxYesNo, "question", ""), 0);
    EXPECT_EQ(presenter.title, "notice") << "nobody would hear the answer";

    presenter.onWindowThread = false;
    std::promise<void> opened;
    presenter.onOpen = [&] { opened.set_value(); };
    auto answer = std::async(std::launch::async,
                             [] { return MessageBoxModal(nullptr, kMessageBoxYesNo, "question", ""); });
    opened.get_future().wait();
    presenter.done(1);
    EXPECT_EQ(answer.get(), 1);
}
