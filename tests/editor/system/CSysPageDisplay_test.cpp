// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/views/controls/MessagePresenter.h"
#include "Tovrane/views/tree/EditLog.h"
#include "editor/system/CSysPageDisplay.h"
#include "editor/system/CSysPagePresetFolderEntrie.h"
#include "effect/instance/CQDT_DKS_Single.h"
#include "effect/parameters/DKS_Mini.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Tovra;
using namespace SYSPAGE_SINGLE;

namespace
{
class SystemPage : public testing::Test
{
protected:
    SystemPage()
    {
        useMessageViews();
        for (const Orbel::ParameterPropertySetup& each : DKS_Mini::ps_plain)
            manager.CreateProperty(&each);
        CSysPageDisplay::CInfo info;
        info.rect = CRect(9.0, 48.0, 591.0, 306.0);
        info.propertyManager = &manager;
        info.effect = &effect;
        info.createObject();
        frame->addView(info.object);
        row = dynamic_cast<CSysPagePresetFolderEntrie*>(
            dynamic_cast<CSysPageDisplay*>(info.object)->getView(4));
        CSysPagePresetFolderEntrie::openFolder = [this](const std::string& shown)
        { return opened = shown, true; };
        HeadlessFrame::of(*frame)->onMessage = [this](const Message& message)
        { return messages.push_back(message.body), 0; };
    }
    ~SystemPage() override
    {
        frame->close();
        frame->forget();
    }
    // The middle of a box of the folder's row, in the frame.
    CPoint in(const CRect& box) const
    {
        const CRect place = row->getViewSize();
        return {9.0 + place.left + (box.left + box.right) / 2.0, 48.0 + place.top + 9.0};
    }
    void click(const CPoint& at)
    {
        WindowEvents& user = HeadlessFrame::of(*frame)->events();
        user.move(at, 0);
        user.press(at, kButtonLeft);
        user.release(at, kButtonLeft);
        frame->idle();
    }

    const TempFolder config, folder;
    const TempEnvironment home{"LODEX_CONFIG_HOME", config.path.c_str()};
    Orbel::CPropertyManager manager;
    CQDT_DKS_Single effect{nullptr};
    Host host;
    ReadOutFrame* frame = new ReadOutFrame({0.0, 0.0, 600.0, 350.0}, nullptr, &host);
    CSysPagePresetFolderEntrie* row = nullptr;
    std::string opened;
    std::vector<std::string> messages;
};
}

TEST_F(SystemPage, TurnsItsSettingsAndTellsAboutThem)
{
    const CPoint dial(9.0 + 10.0 + 281.0 + 40.0, 48.0 + 40.0 + 9.0); // of the first row
    HeadlessFrame::of(*frame)->events().move(dial, 0);
    EXPECT_NE(frame->texts.back(), "");
    click(dial);
    EXPECT_EQ(manager.getPropertyByID(DKS_Mini::kBPMScale)->getCurrentValue(), 0.0f) << "a switch";
    HeadlessFrame::of(*frame)->events().move({300.0, 300.0}, 0);
    EXPECT_EQ(frame->texts.back(), "");
    EXPECT_EQ(credits("3.0.4", "VST3").front(), "Version: QDT Lodex 3.0.4 64bit VST3");
}

TEST_F(SystemPage, OpensAndChangesThePresetFolder)
{
    const std::string before = effect.getPresetFolder();
    click(in(row->openBox()));
    EXPECT_EQ(opened, before);
    EXPECT_EQ(frame->texts.back(), "Click to open Folder");
    click(in({row->openBox().right + 1.0, 0.0, row->changeBox().left - 1.0, 0.0}));
    EXPECT_TRUE(messages.empty()) << "between the boxes";

    HeadlessFrame& window = *HeadlessFrame::of(*frame);
    window.onFileSelector = [](const FileSelectorOptions&) { return std::vector<std::string>(); };
    click(in(row->changeBox()));
    EXPECT_EQ(effect.getPresetFolder(), before) << "nothing was chosen";
    EXPECT_TRUE(messages.empty());
    window.onFileSelector = [this](const FileSelectorOptions& options)
    {
        EXPECT_EQ(options.purpose, FileSelectorOptions::openFolder);
        return std::vector<std::string>{folder.path.string()};
    };
    click(in(row->changeBox()));
    EXPECT_EQ(frame->texts.back(), "Click to select new Folder");
    EXPECT_EQ(std::string(effect.getPresetFolder()).find(folder.path.string()), 0u);
    EXPECT_EQ(messages, std::vector<std::string>({"You need to close and reopen the editor"}));
}
