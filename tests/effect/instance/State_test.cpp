// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/instance/Player.h"
#include "effect/parameters/TimeAdjust.h"
#include "presets/PresetImages.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

using Type = CQDT_DKS_Single::PresetType;

static std::string save(CQDT_DKS_Single& effect, Type type)
{
    char* chunk = nullptr;
    effect.setPresetType(type);
    const long size = effect.getDataChunk(&chunk);
    effect.setPresetType(Type::hostState);
    return {chunk, size_t(size)};
}

static void load(CQDT_DKS_Single& effect, std::string chunk, Type type)
{
    effect.setPresetType(type);
    effect.setDataChunk(chunk.data(), long(chunk.size()));
    effect.setPresetType(Type::hostState);
}

static std::string nameOf(CQDT_DKS_Single& effect)
{
    char name[256];
    effect.getProgramName(name);
    return name;
}

static float value(CQDT_DKS_Single& effect, const char* id)
{
    return effect.getParameterProperty(id)->getCurrentValue();
}

// While an effect is loading, its times don't move each other.
static bool isLoading(CQDT_DKS_Single& effect)
{
    effect.getParameterProperty("ATTACKTIME")->setValue(0.0f);
    effect.getParameterProperty("HOLDTIME")->setValue(20.0f);
    effect.getParameterProperty("ATTACKTIME")->setValue(10.0f);
    return value(effect, "HOLDTIME") == 20.0f;
}

TEST(State, SavedLoadedAndSavedAgainIsTheSameToTheByte)
{
    std::mt19937 random(11);
    CQDT_DKS_Single effect(nullptr), other(nullptr);
    for (int i = 0; i < 1000; ++i)
    {
        for (int id = 0; id < 15; ++id)
            effect.getParameterPropertyByID(id)->setValue_Normalized(float(random() % 10001) / 10000.0f);
        effect.setTimeAdjust(gTimeAdjustMultiplier[random() % gNumTimeAdjustEntries]);
        effect.setPresetName(("100% %n of " + std::to_string(random() % 1000)).c_str());
        for (const Type type : {Type::hostState, Type::presetFile})
        {
            // The tempo's mirror isn't loaded, so only the second save has what the third has.
            load(other, save(effect, type), type);
            const std::string first = save(other, type);
            load(effect, first, type);
            ASSERT_EQ(save(effect, type), first) << i;
        }
    }
}

TEST(State, APresetLeavesTheSystemSettingsAtTheirDefaultsAndAStateBringsThem)
{
    CQDT_DKS_Single source(nullptr);
    source.getParameterProperty("CLICKFILTER")->setValue(0.75f);
    source.getParameterProperty("TRIGGERSHIFT")->setValue(-0.5f);
    source.getParameterProperty("STRENGTH")->setValue(0.5f);
    struct Case
    {
        Type saved, loaded;
        float filter;
    };
    for (const Case& each : {Case{Type::hostState, Type::hostState, 0.75f},
                             {Type::hostState, Type::presetFile, 0.25f},
                             {Type::presetFile, Type::hostState, 0.25f}})
    {
        CQDT_DKS_Single effect(nullptr);
        effect.getParameterProperty("CLICKFILTER")->setValue(1.0f);
        load(effect, save(source, each.saved), each.loaded);
        EXPECT_EQ(value(effect, "CLICKFILTER"), each.filter);
        EXPECT_EQ(value(effect, "STRENGTH"), 0.5f);
        EXPECT_FALSE(isLoading(effect));
    }
}

TEST(State, WhatCannotBeTakenLeavesDefaultsAndTheName)
{
    CQDT_DKS_Single source(nullptr);
    source.setPresetName("Kept");
    source.getParameterProperty("STRENGTH")->setValue(0.5f);
    const std::string good = save(source, Type::hostState);
    std::string wrongID = good, tooNew = good;
    wrongID[0] = 'X';
    tooNew[28 + 1] = 0x20;
    for (const std::string& bad : {wrongID, tooNew, good.substr(0, good.size() - 1), std::string(20, 'x')})
    {
        load(source, good, Type::hostState);
        ASSERT_EQ(value(source, "STRENGTH"), 0.5f);
        load(source, bad, Type::hostState);
        EXPECT_EQ(value(source, "STRENGTH"), 1.0f);
        EXPECT_EQ(nameOf(source), "Kept");
        EXPECT_FALSE(isLoading(source));
    }
}

TEST(State, ABankBringsItsCurrentPresetAndLeavesTheEffectLoading)
{
    CQDT_DKS_Single source(nullptr);
    std::vector<std::string> presets;
    for (int i = 0; i < 3; ++i)
    {
        source.setPresetName(("Number " + std::to_string(i)).c_str());
        source.getParameterProperty("STRENGTH")->setValue(0.25f * float(i));
        source.getParameterProperty("CLICKFILTER")->setValue(0.125f * float(i));
        source.setTimeAdjust(gTimeAdjustMultiplier[i]);
        presets.push_back(save(source, Type::presetFile));
    }
    struct Case
    {
        const char *current, *name;
        float strength, filter, timeBase;
    };
    const Case table[] = {
        {"2", "Number 2", 0.5f, 0.25f, 1.0f}, // the system settings come from the preset's own data
        {"", "Number 0", 0.0f, 0.0f, 0.25f},
        {"99999999999999999999", "Init", 1.0f, 0.25f, 4.0f}};
    for (const Case& each : table)
    {
        SCOPED_TRACE(each.current);
        CQDT_DKS_Single effect(nullptr);
        effect.setTimeAdjust(4.0f);
        load(effect, images::bank(presets, each.current), Type::hostState);
        EXPECT_EQ(nameOf(effect), each.name);
        EXPECT_EQ(value(effect, "STRENGTH"), each.strength);
        EXPECT_EQ(value(effect, "CLICKFILTER"), each.filter);
        EXPECT_EQ(effect.getTimeAdjust(), 4.0f) << "the one from before";
        EXPECT_TRUE(isLoading(effect));
        effect.finishBankLoad();
        EXPECT_EQ(effect.getTimeAdjust(), each.timeBase);
        EXPECT_FALSE(isLoading(effect));

        effect.setTimeAdjust(4.0f); // nothing of the bank is left for the next state
        load(effect, save(source, Type::presetFile), Type::hostState);
        effect.finishBankLoad();
        EXPECT_EQ(effect.getTimeAdjust(), source.getTimeAdjust());
    }
}

TEST(State, TheStartStateIsSilentAndNew)
{
    Player player;
    player.set("STRENGTH", 0.0f);
    player.effect.setTimeAdjust(4.0f);
    player.effect.setPresetName("Other");
    player.play(1000);
    player.effect.initPreset();
    EXPECT_EQ(nameOf(player.effect), "Init");
    EXPECT_EQ(player.get("STRENGTH"), 1.0f);
    EXPECT_EQ(player.effect.getTimeAdjust(), 1.0f);
    player.play(100);
    EXPECT_EQ(player.left.back(), 0.0f); // the delay line was emptied
}
