// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/engine/LinkedTimes.h"

#include <gtest/gtest.h>

TEST(LinkedTimes, GiveWayToAttackAndHold)
{
    struct Case
    {
        EnvelopeTimes before;
        LinkedTime changed;
        float value;
        EnvelopeTimes after;
    };
    const auto attack = LinkedTime::attack, hold = LinkedTime::hold;
    const Case table[] = {
        {{0, 20, 450}, attack, 10, {10, 10, 450}}, // the hold takes it up
        {{10, 10, 450}, attack, 60, {60, 1, 441}}, // to its minimum; the release gives what the hold gave: 9
        {{60, 1, 441}, attack, 30, {30, 31, 441}}, // back again
        {{200, 150, 100}, attack, 0, {0, 200, 150}}, // to its maximum; the release takes what the hold took
        {{0, 20, 450}, hold, 30, {0, 30, 440}},
        {{0, 20, 25}, hold, 200, {0, 200, 20}},  // the release ends at its minimum
        {{0, 200, 450}, hold, 20, {0, 20, 500}}, // and at its maximum
        {{5, 20, 450}, attack, 5, {5, 20, 450}},
    };
    for (const Case& each : table)
    {
        const EnvelopeTimes after = linkedTimes(each.before, each.changed, each.value, {1, 200}, {20, 500});
        EXPECT_FLOAT_EQ(after.attack, each.after.attack);
        EXPECT_FLOAT_EQ(after.hold, each.after.hold);
        EXPECT_FLOAT_EQ(after.release, each.after.release) << each.before.attack << " to " << each.value;
    }
}
