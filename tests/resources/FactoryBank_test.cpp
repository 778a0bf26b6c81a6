// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/CFileFormat.h"
#include "effect/parameters/DKS_Mini.h"
#include "effect/parameters/TimeAdjust.h"
#include "presets/SavedBank.h"
#include "presets/SavedState.h"
#include "tools/pack_presets/FactoryBank.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>

using namespace lodex;
using Values = std::map<std::string, float>; // by id text

static const std::filesystem::path sources = LODEX_SOURCES;

static std::string contentOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

static std::vector<std::string> factoryFiles()
{
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(sources / "resources/presets"))
        if (entry.path().extension() == ".preset" && entry.path().filename() != "init.preset")
            files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
    return files;
}

static const std::vector<PresetText>& factoryTexts()
{
    static const std::vector<PresetText> texts = readBankFiles(factoryFiles());
    return texts;
}

static std::string payloadOf(Orbel::CPresetFormat&& format, const std::string& image)
{
    format.setPluginID(0x51444B43);
    std::string_view payload;
    EXPECT_TRUE(format.unwrap(image, payload).isSound());
    return std::string(payload);
}

static SavedState stateIn(std::string_view bytes)
{
    Orbel::CPresetStore store;
    SavedState state;
    EXPECT_EQ(state.read(store, bytes).why, "");
    EXPECT_EQ(store.getString("SINGLEPRESET"), state.name);
    EXPECT_TRUE(state.systemSettings.empty());
    return state;
}

static Values valuesIn(const SavedState& state)
{
    Values values;
    for (size_t i = 0; i < state.parameters.size(); ++i)
        values[std::string(state.parameters.id(i))] = state.parameters.value(i);
    return values;
}

static Values defaultValues()
{
    Values values;
    for (const auto& row : DKS_Mini::ps_plain)
        values[row.id] = row.defaultValue;
    values["TEMPO"] = 10.0f; // its default lies below its range
    return values;
}

static Values valuesOf(const PresetText& text)
{
    Values values = defaultValues();
    for (const auto& each : text.values)
        values[DKS_Mini::ps_plain[each.parameter].id] = each.value;
    return values;
}

TEST(FactoryBank, HoldsEveryPresetAsItsTextSays)
{
    const auto& texts = factoryTexts();
    const std::string image = contentOf(LODEX_FACTORY_BANK);
    SavedBank bank;
    EXPECT_TRUE(bank.read(payloadOf(Orbel::CPresetFormatFXB(), image)).isSound());
    EXPECT_GE(texts.size(), 32u);
    EXPECT_EQ(bank.getDeclaredCount(), long(texts.size()));
    EXPECT_EQ(bank.getCurrent(), 0);
    EXPECT_EQ(bank.getPreset(long(texts.size())).data(), nullptr);

    std::set<std::string> names;
    for (size_t i = 0; i < texts.size(); ++i)
    {
        SCOPED_TRACE(texts[i].name);
        const SavedState preset = stateIn(bank.getPreset(long(i)));
        EXPECT_EQ(preset.name, texts[i].name);
        EXPECT_EQ(preset.timeBase, gTimeAdjustMultiplier[texts[i].timeBase]);
        EXPECT_EQ(valuesIn(preset), valuesOf(texts[i]));
        EXPECT_TRUE(names.insert(texts[i].name).second);
        EXPECT_LE(texts[i].name.size(), 28u);
    }
    EXPECT_EQ(packBank(texts), image); // the same bytes each time
}

// A longer one is cut short in the middle of its release.
TEST(FactoryBank, HasOnlyShapesThatEndWithinTheirCycle)
{
    constexpr float cycle = 468.75f; // milliseconds of a beat at 128 BPM, in which times are kept
    for (const auto& text : factoryTexts())
    {
        Values values = valuesOf(text);
        EXPECT_LE(values["ATTACKTIME"] + values["HOLDTIME"] + values["RELEASTIME"], cycle) << text.name;
    }
}

TEST(FactoryBank, StartsFromTheDefaults)
{
    const std::string image = contentOf(LODEX_INIT_PRESET);
    EXPECT_STREQ(image.substr(28, 28).c_str(), "Init");
    const SavedState preset = stateIn(payloadOf(Orbel::CPresetFormatFXP(), image));
    EXPECT_EQ(preset.name, "Init");
    EXPECT_EQ(preset.timeBase, 1.0f);
    EXPECT_EQ(valuesIn(preset), defaultValues());
}

TEST(FactoryBank, IsListedInTheManual)
{
    std::istringstream page(contentOf(sources / "docs/factory-presets.md"));
    std::vector<std::string> rows, expected;
    for (std::string line; std::getline(page, line);)
        if (line.find_first_of("123456789") == 2)
            rows.push_back(line);
    for (const auto& text : factoryTexts())
    {
        const std::string number = std::to_string(expected.size() + 1);
        expected.push_back("| " + number + " | " + text.name + " | " + gTimeAdjustText[text.timeBase] +
                           " | " + text.about + " |");
    }
    EXPECT_EQ(rows, expected);
}

TEST(PresetText, ReadsEntriesCommentsAndTheEndsOfRanges)
{
    std::istringstream stream(
        "# first\r\n\n name=100% = Pump #1\r\nabout =\tTo = fro \n\ntime base = 1 Bar D\n"
        "ATTACKTIME = 300\nRELEASTIME=20#least\nATTACKCRUVE = -8\nTIME_OFFSET = 2.5e-1");
    const PresetText text = parsePresetText(stream, "pump.preset");
    std::istringstream wrong("name = A\nHOLDTIM = 20");
    EXPECT_THROW(parsePresetText(wrong, "pump.preset"), PresetTextError);
    EXPECT_EQ(text.name, "100% = Pump");
    EXPECT_EQ(text.about, "To = fro");
    EXPECT_STREQ(gTimeAdjustText[text.timeBase], "1 Bar D");
    Values expected = defaultValues();
    expected["ATTACKTIME"] = 300.0f;
    expected["RELEASTIME"] = 20.0f;
    expected["ATTACKCRUVE"] = -8.0f;
    expected["TIME_OFFSET"] = 0.25f;
    EXPECT_EQ(valuesOf(text), expected);
}
