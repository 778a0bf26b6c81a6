// SPDX-License-Identifier: GPL-3.0-or-later
#include "Sonvex/MessageBox.h"

#include <gtest/gtest.h>
#include <string>

using Sonvex::MessageBoxModal;

namespace
{
class Presenter final : public Sonvex::IMessageBoxPresenter
{
public:
    Presenter() { Sonvex::setMessageBoxPresenter(this); }
    ~Presenter() { Sonvex::setMessageBoxPresenter(nullptr); }
    int show(Tovra::CFrame*, Sonvex::MessageBoxType, const char* shownTitle, const char* shownBody) override
    {
        title = shownTitle;
        body = shownBody;
        return 3;
    }

    std::string title, body;
};
}

TEST(MessageBox, ShowsTextsAsTheyStandAndFormatsWithArguments)
{
    EXPECT_EQ(MessageBoxModal(nullptr, Sonvex::kMessageBoxYesNo, "title", "%s", "body"), 0); // nobody to ask
    const Presenter presenter;
    EXPECT_EQ(MessageBoxModal(nullptr, Sonvex::kMessageBoxYesNo, "100%s", "5% %s"), 3);
    EXPECT_EQ(presenter.title, "100%s");
    EXPECT_EQ(presenter.body, "5% %s");
    MessageBoxModal(nullptr, Sonvex::kMessageBoxOk, "title", "File %s %i", "%d", 2);
    EXPECT_EQ(presenter.body, "File %d 2");

    const std::string longBody = std::string(430, 'x') + "\xC3\xA4";
    MessageBoxModal(nullptr, Sonvex::kMessageBoxOk, nullptr, "%s", longBody.c_str());
    EXPECT_EQ(presenter.body.size(), 430u);
    MessageBoxModal(nullptr, Sonvex::kMessageBoxOk, nullptr, longBody.c_str());
    EXPECT_EQ(presenter.body.size(), 430u) << "no half character";
}
