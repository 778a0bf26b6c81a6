// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/CBaseObject.h"

#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace
{
class Counted : public Tovra::CBaseObject
{
public:
    explicit Counted(int& destroyed) : destructions(destroyed) {}
    ~Counted() override { ++destructions; }

private:
    int& destructions;
};
}

TEST(CBaseObject, LivesUntilItsLastHolderForgetsIt)
{
    int destroyed = 0;
    auto* object = new Counted(destroyed);
    object->remember();
    object->remember();
    auto* copy = new Counted(*object);
    copy->forget();
    EXPECT_EQ(destroyed, 1) << "a copy has one reference, however many its original had";
    object->forget();
    object->forget();
    EXPECT_EQ(destroyed, 1);
    object->forget();
    EXPECT_EQ(destroyed, 2);
}

TEST(CBaseObject, CountsHoldersOfSeveralThreads)
{
    int destroyed = 0;
    auto* object = new Counted(destroyed);
    std::vector<std::thread> holders;
    const auto hold = [object]
    {
        for (int turn = 0; turn < 10000; ++turn)
            object->remember(), object->forget();
        object->forget();
    };
    for (int i = 0; i < 4; ++i)
    {
        object->remember();
        holders.emplace_back(hold);
    }
    object->forget();
    for (auto& holder : holders)
        holder.join();
    EXPECT_EQ(destroyed, 1);
}
