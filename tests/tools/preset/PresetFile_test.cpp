// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetImages.h"
#include "tools/common/ToolError.h"
#include "tools/preset/PresetEffect.h"
#include "tools/preset/PresetFile.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lodex;
using testing::HasSubstr;
using testing::StartsWith;

// Why an image is refused; empty if it isn't.
static std::string refusal(const std::string& image)
{
    try
    {
        parsePresetFile(image);
        return {};
    }
    catch (const ToolError& reason)
    {
        return reason.what();
    }
}

static PresetContent contentOf(const PresetFile& file, size_t index, PresetType taken)
{
    PresetEffect effect;
    effect.load(file, index, taken);
    return effect.content();
}

static float value(const PresetContent& content, const std::string& id)
{
    for (const auto& each : content.parameters)
        if (each.id == id)
            return each.value;
    return NAN;
}

namespace
{
struct PresetFileTest : testing::Test
{
    const std::string half = images::preset("Half", {{"STRENGTH", 0.5f}});
    const std::string taggedTwo = images::taggedBank(images::entry("A", 0.5f) + images::entry("B", 0.5f), 2);
};
}

TEST_F(PresetFileTest, KnowsEveryFormByItsContent)
{
    const std::string bank = images::bank({half, half, half});
    const std::string tagged = images::taggedPreset(1, 0.5f);
    const std::string raw = images::rawProgram("Half", 0.5f);
    const auto state = PresetType::state, preset = PresetType::preset;
    const struct
    {
        const char* name;
        std::string image;
        PresetType type;
        bool older;
        size_t bankOf; // 0: a single one
    } cases[] = {
        {"program file", images::file(half), preset, false, 0},
        {"bank file", images::bankFile(bank), preset, false, 3},
        {"chunk", half, state, false, 0},
        {"bank chunk", bank, state, false, 3},
        {"stream", images::stream(half), state, false, 0},
        {"raw program", raw, state, true, 0},
        {"raw program in a file", images::file(raw), preset, true, 0},
        {"raw bank", images::rawBank(0.5f), state, true, 32},
        {"raw bank that looks like a file", "CcnK" + images::rawBank(0.5f).substr(4), state, true, 32},
        {"tagged", tagged, state, true, 0},
        {"tagged bank", taggedTwo, state, true, 2},
    };
    for (const auto& each : cases)
    {
        SCOPED_TRACE(each.name);
        ASSERT_EQ(refusal(each.image), "");
        const PresetFile file = parsePresetFile(each.image);
        EXPECT_EQ(file.problem, "");
        EXPECT_EQ(file.type, each.type);
        EXPECT_EQ(file.isOlder, each.older);
        EXPECT_EQ(file.isBank, each.bankOf > 0);
        EXPECT_EQ(file.presets.size(), std::max<size_t>(each.bankOf, 1));
        EXPECT_EQ(value(contentOf(file, file.presets.size() - 1, file.type), "STRENGTH"), 0.5f);
    }
}

TEST_F(PresetFileTest, LooksForAFilesOwnHeaderBeforeTheSizesOfRawForms)
{
    const std::string bank = images::bank({half, half});
    for (const size_t size : {6728u, 6860u})
    {
        const std::string images[] = {images::file(half), images::bankFile(bank), half, bank,
                                      images::stream(padded(bank, size - 8))};
        for (const std::string& image : images)
        {
            const PresetFile file = parsePresetFile(padded(image, size));
            EXPECT_EQ(file.problem, "");
            EXPECT_FALSE(file.isOlder);
            for (const PresetType taken : {PresetType::state, PresetType::preset})
                EXPECT_EQ(value(contentOf(file, 0, taken), "STRENGTH"), 0.5f);
        }
        EXPECT_TRUE(parsePresetFile(images::file(std::string(size, '\0'))).isOlder)
            << "as the plug-in takes it";
    }
    EXPECT_THAT(refusal(padded(images::file(half, "FPCh"), 184)), HasSubstr("cut off at byte 184 of "));
}

TEST_F(PresetFileTest, SaysWhyNothingCanBeUsed)
{
    const auto withParameters = [](const std::string& chunk) {
        return images::store("QDT_DKS_PRESET", "", {{"PPDATA", chunk}});
    };
    const std::string file = images::file(half);
    std::string broken = half;
    broken[100] = char(broken[100] ^ 1);
    const std::string tooMuch = images::withField(images::parameters({}), 36, 17 << 20);
    const struct
    {
        std::string image;
        const char* reason;
    } cases[] = {
        {"", "it is empty"},
        {"QDT_DKS_PRES", "none of the forms"},
        {"CcnKxxxx", "cut off at byte 8 of 60 of its header"},
        {images::file(half, "FxCk"), "kind \"FxCk\", not \"FPCh\" or \"FBCh\""},
        {std::string(file).replace(16, 4, "\n\xff\1%"), "its id is \"?\xef\xbf\xbd?%\", not \"QDKC\""},
        {std::string(file).replace(56, 4, "\xff\xff\xff\xff").substr(0, 300), "byte 300 of 4294967355"},
        {images::stream(half).substr(0, 200), "cut off at byte 200 of "},
        {broken, "its data does not unpack"},
        {images::withField(half, 40, 17 << 20), "it would unpack to 17825792 bytes"},
        {withParameters(""), "it holds no parameters"},
        {withParameters(tooMuch), "its chunk of parameters: it would unpack to 17825792 bytes"},
        {images::store("QDT_DKS_PRESET", "", {{"PPDATA", images::parameters({})}, {"SystemData", tooMuch}}),
         "its chunk of system settings: it would unpack to 17825792 bytes"},
        {images::bank({}), "it holds no preset"},
        {images::bank({images::rawProgram("Half", 0.5f)}), "preset 0: it is of an older form"},
        {padded("QDTDKSBNK", 543), "cut off at byte 543 of 544"},
    };
    for (const auto& each : cases)
        EXPECT_THAT(refusal(each.image), HasSubstr(each.reason));
}

TEST_F(PresetFileTest, UsesWhatIsLeftAndSaysWhatIsMissing)
{
    const std::string tagged = images::taggedPreset(3, 0.5f);
    const std::string halfChunk = images::parameters({{"STRENGTH", 0.5f}});
    const struct
    {
        std::string image;
        const char* problem;
        float strength;
    } cases[] = {
        {images::withField(half, 40, 2000), "its chunks end after 3, at byte ", 0.5f},
        {tagged.substr(0, tagged.size() - 1), "its values are cut off after 2 of 3", 0.5f},
        {images::file(tagged).substr(0, 750), "it is cut off at byte 750 of 844", 0.5f},
        {images::taggedPreset(1, 0.5f, 1), "its values are enciphered", 1.0f},
        {taggedTwo.substr(0, 700), "its presets are cut off after 1 of 2", 0.5f},
        {images::preset("Half", {{"STRENGTH", 0.5f}}, "nan"), "its time base is \"nan\"", 0.5f},
        {images::store("QDT_DKS_PRESET", "", {{"PPDATA", halfChunk}, {"SystemData", "junk"}}),
         "its chunk of system settings: there is no \"ppCh\"", 0.5f},
        {images::store("QDT_DKS_BANK", "", {{"PRESET0", half}, {"PRESET2", half}}),
         "it does not tell how many presets it holds", 0.5f},
        {images::store("QDT_DKS_BANK", "", {{"PRESET0", half}, {"NumPresets", "1000000"}}),
         "it holds 1 of 1000000 presets", 0.5f},
    };
    for (const auto& each : cases)
    {
        SCOPED_TRACE(each.problem);
        ASSERT_EQ(refusal(each.image), "");
        const PresetFile file = parsePresetFile(each.image);
        EXPECT_THAT(file.problem, StartsWith(each.problem));
        EXPECT_EQ(value(contentOf(file, 0, file.type), "STRENGTH"), each.strength);
    }
}
