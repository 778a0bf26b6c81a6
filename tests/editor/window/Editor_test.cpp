// SPDX-License-Identifier: GPL-3.0-or-later
#include "DSP/dsp_Math.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "editor/panel/CToggleDisplay.h"
#include "editor/panel/CToggleDisplayDial.h"
#include "editor/window/Bitmaps.h"
#include "editor/window/QDT_SingleSidechain_Editor.h"
#include "effect/instance/Player.h"
#include "effect/parameters/TimeAdjust.h"

#include <cmath>
#include <gtest/gtest.h>

using Tovra::CEnvelopePoint;

namespace
{
// An effect with its window.
struct Instance
{
    Instance()
    {
        setEditorFactory([](CQDT_DKS_Single& effect) -> std::unique_ptr<IEffectEditor>
                         { return std::make_unique<QDT_SingleSidechain_Editor>(effect); });
        player = std::make_unique<Player>();
        setEditorFactory(nullptr);
    }
    QDT_SingleSidechain_Editor& editor() const
    {
        return dynamic_cast<QDT_SingleSidechain_Editor&>(*player->effect.getEditor());
    }
    std::unique_ptr<Player> player;
};

// How deep the display draws the duck, a number of units from its left edge: 0 to 1.
double drawnAt(CEnvelopeDisplaySingle& display, double x)
{
    for (const int index : {2, 3, 5})
    {
        const CEnvelopePoint& to = *display.getEnvelopePointFromIndex(index);
        const CEnvelopePoint& from = *display.getEnvelopePointFromIndex(to.previous);
        if (x >= from.place.x && x <= to.place.x)
            return Tovra::getCurveCoord_POW(from.place, to.place, to.curve,
                                            float((x - from.place.x) / (to.place.x - from.place.x)))
                       .y /
                   237.0;
    }
    return 0.0;
}
}

TEST(Editor, DrawsTheEnvelopeWhereTheScopeMeasuresTheGain)
{
    using Point = Tovra::IScopeDataProvider::scope_data_point_t;
    for (const float tempo : {61.0f, 128.0f, 174.5f})
        for (const float base : {0.5f, 1.0f, 4.0f / 3.0f, 3.0f})
        {
            Instance instance;
            Player& player = *instance.player;
            player.set("LINKTIMES", 0.0f);
            player.set("ATTACKTIME", 60.0f);
            player.set("HOLDTIME", 40.0f);
            player.set("RELEASTIME", 250.0f);
            player.set("ATTACKCRUVE", 0.8f);
            player.set("RELEASECURVE", -0.7f);
            player.set("STRENGTH", 0.9f);
            player.effect.setTimeAdjust(base);
            player.tempo = tempo;
            player.ppq = 0.5 * base;
            ASSERT_TRUE(instance.editor().open(nullptr));
            player.play(512); // tells the tempo
            instance.editor().idle();
            player.play(long(6.3 * base * 60.0 / tempo * 44100.0), 512);
            instance.editor().idle();
            CEnvelopeDisplaySingle& display = *instance.editor().getEnvelopeDisplay();
            std::vector<Point> gain(553);
            ASSERT_TRUE(player.effect.getScope().data().tryLock());
            player.effect.getScope().data().getScopeData(EffectScope::gain, gain.data(), 553);
            player.effect.getScope().data().unlock();
            for (const int x : {5, 20, 35, 50, 70, 100, 140, 180, 200, 240, 400})
            {
                const int cycle = x < 276 ? x : x - 276; // the second one looks like the first
                const double measured = (1.0 - double(gain[size_t(x)].max + gain[size_t(x)].min) / 2.0) / 2.0;
                EXPECT_NEAR(drawnAt(display, cycle + 0.5), measured, 0.04)
                    << "column " << x << " at " << tempo << ", time base " << base;
            }
            if (testing::Test::HasFailure())
                return;
        }
}

TEST(Editor, HasItsPicturesAtEveryScale)
{
    const Bitmaps& all = bitmaps();
    const struct
    {
        Tovra::CBitmap* bitmap;
        double width, height;
    } sizes[] = {{all.BackBitmap.get(), 600, 350},    {all.memBtnBitmap.get(), 90, 98},
                 {all.aLeftBmp.get(), 11, 19},        {all.aRightBmp.get(), 11, 19},
                 {all.aDownBmp.get(), 11, 19},        {all.button_syspage.get(), 41, 84},
                 {all.toggle_display.get(), 120, 250}};
    for (const auto& each : sizes)
    {
        EXPECT_EQ(each.bitmap->getWidth(), each.width);
        EXPECT_EQ(each.bitmap->getHeight(), each.height);
    }
}

TEST(Editor, TakesATimeBaseFromThePanelToAllThatShowIt)
{
    Instance instance;
    QDT_SingleSidechain_Editor& editor = instance.editor();
    editor.open(nullptr);
    Tovra::HeadlessFrame& window = *Tovra::HeadlessFrame::of(*editor.getFrame());
    window.onMenu = [](Tovra::IMenu& menu) {
        return Tovra::MenuChoice{&menu, 7};
    }; // behind a separator: 1/8T
    instance.player->set("ATTACKTIME", 68.75f);
    instance.player->set("HOLDTIME", 100.0f);
    instance.player->set("LINKTIMES", 0.0f);
    editor.idle();
    EXPECT_FLOAT_EQ(editor.getToggleDisplay()->getReleaseDial()->deadZone().centre,
                    (300.0f - 20.0f) / 480.0f);
    window.events().press({585.0, 60.0}, Tovra::kButtonLeft); // the edge that is seen of the closed panel
    window.events().release({585.0, 60.0}, Tovra::kButtonLeft);
    Tovra::CPoint menu(577.0 + 20.5, 65.0);
    window.events().press(menu, Tovra::kButtonLeft);
    window.events().release(menu, Tovra::kButtonLeft);
    editor.idle();
    EXPECT_EQ(instance.player->effect.getTimeAdjust(), gTimeAdjustMultiplier[6]);
    EXPECT_EQ(editor.getEnvelopeDisplay()->getTimeAdjustIndex(), 6);
}

TEST(Editor, HasTwoPagesOfWhichEachOpeningShowsTheFirst)
{
    Instance instance;
    QDT_SingleSidechain_Editor& editor = instance.editor();
    editor.showSystemPage(true); // without a window
    editor.open(nullptr);
    EXPECT_FALSE(editor.showsSystemPage());
    Tovra::WindowEvents& user = Tovra::HeadlessFrame::of(*editor.getFrame())->events();
    user.press({578.0, 330.0}, Tovra::kButtonLeft); // the gear
    user.release({578.0, 330.0}, Tovra::kButtonLeft);
    editor.idle();
    EXPECT_TRUE(editor.showsSystemPage());
    EXPECT_FALSE(editor.getEnvelopeDisplay()->isVisible() || editor.getToggleDisplay()->isVisible());
    editor.showSystemPage(false);
    EXPECT_TRUE(editor.getEnvelopeDisplay()->isVisible() && editor.getToggleDisplay()->isVisible());
    editor.showSystemPage(true);
    editor.close();
    editor.open(nullptr);
    EXPECT_FALSE(editor.showsSystemPage());
}

TEST(Editor, FollowsTempoAndTimeBaseWhileItIsOpen)
{
    Instance instance;
    QDT_SingleSidechain_Editor& editor = instance.editor();
    double width = 0.0, height = 0.0;
    editor.getSize(width, height);
    EXPECT_EQ(width, 600.0);
    EXPECT_EQ(height, 350.0);
    instance.player->effect.open_editor(nullptr);
    EXPECT_EQ(editor.getEnvelopeDisplay()->getTempo(), 120.0f) << "no block has told one";
    instance.player->tempo = 90.0;
    instance.player->play(64);
    instance.player->effect.setTimeAdjust(0.375f);
    editor.setTimeAdjust(0.375f);
    editor.idle();
    EXPECT_EQ(editor.getEnvelopeDisplay()->getTempo(), 90.0f);
    EXPECT_EQ(editor.getEnvelopeDisplay()->getTimeAdjustIndex(), 10);
    instance.player->effect.close_editor();
    EXPECT_EQ(editor.getEnvelopeDisplay(), nullptr);
    instance.player->play(64); // nobody is there
    editor.idle();
    instance.player->effect.open_editor(nullptr);
    EXPECT_EQ(editor.getEnvelopeDisplay()->getTempo(), 90.0f);
    instance.player.reset(); // the effect goes with its window open
}
