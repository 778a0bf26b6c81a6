#include "Sonvex/MessageBox.h"

#include <gtest/gtest.h>
#include <string>

namespace
{
class Presenter final : public Sonvex::IMessageBoxPresenter
{
public:
    Presenter() { Sonvex::setMessageBoxPresenter(this); }
    ~Presenter() { Sonvex::setMessageBoxPresenter(nullptr); }
    int show(Tovra::CFrame*, Sonvex::MessageBoxType shownType, const char* shownTitle,
             const char* shownBody) override
    {
        type = shownType;
        title = shownTitle;
        body = shownBody;
        return 3;
    }

    Sonvex::MessageBoxType type{};
    std::string title, body;
};
}

using Sonvex::kMessageBoxOk;
using Sonvex::kMessageBoxYesNo;
using Sonvex::MessageBoxModal;

TEST(MessageBox, AnswersNoWithoutAPresenter)
{
    EXPECT_EQ(MessageBoxModal(nullptr, kMessageBoxYesNo, "title", "body"), 0);
    {
        const Presenter presenter;
        EXPECT_EQ(MessageBoxModal(nullptr, kMessageBoxYesNo, "title", "body"), 3);
    }
    EXPECT_EQ(MessageBoxModal(nullptr, kMessageBoxYesNo, "title", "%s", "body"), 0);
}

TEST(MessageBox, ShowsTextsAsTheyStandAndFormatsWithArguments)
{
    const Presenter presenter;
    MessageBoxModal(nullptr, kMessageBoxYesNo, "100%s", "5% %s");
    EXPECT_EQ(presenter.title, "100%s");
    EXPECT_EQ(presenter.body, "5% %s");
    EXPECT_EQ(presenter.type, kMessageBoxYesNo);
    MessageBoxModal(nullptr, kMessageBoxOk, "title", "File %s %i", "%d", 2);
    EXPECT_EQ(presenter.body, "File %d 2");

    const std::string longBody(1000, 'x');
    MessageBoxModal(nullptr, kMessageBoxOk, nullptr, longBody.c_str());
    EXPECT_EQ(presenter.body.size(), 431u);
    EXPECT_EQ(presenter.title, "");
    MessageBoxModal(nullptr, kMessageBoxOk, nullptr, "%s", longBody.c_str());
    EXPECT_EQ(presenter.body.size(), 431u);
}
