// SPDX-License-Identifier: GPL-3.0-or-later
// What the window shows for the effect's parameters, typed into it again.
#include "Orbel/parameters/ParameterReading.h"
#include "effect/instance/Player.h"
#include "effect/parameters/DKS_Mini.h"
#include "effect/parameters/TimeAdjust.h"

#include <gtest/gtest.h>
#include <string>

namespace
{
std::string shown(Orbel::ParameterProperty& property, bool withUnit)
{
    char text[Orbel::kParameterTextSize] = {};
    Orbel::renderPropertyText(&property, text, true, withUnit, true);
    return text;
}
}

TEST(ReadBack, EveryParameterReadsWhatItShowsAtEveryTempoAndTimeBase)
{
    Player player;
    player.set("LINKTIMES", 0.0f); // each time moves alone
    for (const double tempo : {20.0, 97.3, 128.0, 300.0})
        for (const float beats : {gTimeAdjustMultiplier[0], gTimeAdjustMultiplier[7], 6.0f})
            for (int i = 0; i < 15 * 2 * 41; ++i)
            {
                Orbel::ParameterProperty& property = *player.effect.getParameterPropertyByID(i % 15);
                player.effect.getParameterPropertyByID(DKS_Mini::kBPMScale)->setValue(float(i / 15 % 2));
                player.tempo = tempo;
                player.effect.setTimeAdjust(beats);
                player.play(1);
                property.setValue(property.getMin() +
                                  (property.getMax() - property.getMin()) * float(i / 30) / 40.0f);
                for (const bool withUnit : {false, true})
                {
                    const std::string before = shown(property, withUnit);
                    const auto value = Orbel::readPropertyText(property, before);
                    ASSERT_TRUE(value) << property.getID() << " " << before;
                    property.setValue(*value);
                    EXPECT_EQ(shown(property, withUnit), before) << property.getID() << " at " << tempo;
                }
            }
}

TEST(ReadBack, TimesAreTypedAsTheyAreHeard)
{
    Player player;
    player.set("LINKTIMES", 0.0f);
    player.tempo = 64.0;
    player.effect.setTimeAdjust(2.0f); // shown four times as long as they are stored
    player.play(1);
    Orbel::ParameterProperty& attack = *player.effect.getParameterPropertyByID(DKS_Mini::kAttackTime);
    const auto typed = [&](const char* text)
    { return Orbel::readPropertyText(attack, text).value_or(-1.0f); };
    EXPECT_EQ(typed("120.00 ms"), 30.0f);
    EXPECT_EQ(typed("0,5 s"), 125.0f);
    EXPECT_EQ(typed("Attack Time: 120.00 ms / Attack Curve: 0.00%"), 30.0f);
    EXPECT_EQ(typed("50 %"), -1.0f);
    player.set("BPMSCALE", 0.0f);
    EXPECT_EQ(typed("120"), 120.0f);
    attack.setValue("120.00 ms"); // as a host enters it
    EXPECT_EQ(attack.getCurrentValue(), 120.0f);
}
