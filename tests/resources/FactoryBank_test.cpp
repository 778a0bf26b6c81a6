#include "CORE/Numbers.h"
#include "Orbel/parameters/CPropertyManager.h"
#include "Orbel/storage/CFileFormat.h"
#include "Orbel/storage/CPresetStore.h"
#include "effect/parameters/DKS_Mini.h"
#include "effect/parameters/TimeAdjust.h"
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

// A store within the image of a file, or within another store.
static Orbel::CPresetStore opened(const char* id, const char* data, long size)
{
    Orbel::CPresetStore store;
    store.setPresetID(id);
    std::string copy(data, size_t(size));
    EXPECT_EQ(store.setPreset(copy.data(), size), 0);
    return store;
}

static Orbel::CPresetStore openedFile(Orbel::CPresetFormat&& format, const char* id, const std::string& image)
{
    format.setPluginID(0x51444B43);
    std::string_view payload;
    EXPECT_TRUE(format.unwrap(image, payload).isSound());
    return opened(id, payload.data(), long(payload.size()));
}

// What a set of parameters holds after a preset was loaded into it, whatever it held before.
static Values valuesIn(const Orbel::CPresetStore& preset)
{
    Orbel::CPropertyManager parameters;
    for (const auto& row : DKS_Mini::ps_plain)
        parameters.CreateProperty(&row)->setValue(row.maximum);
    char* chunk = nullptr;
    const long size = preset.getChunk("PPDATA", &chunk);
    parameters.setChunkWithLoadSuffix(chunk, size_t(size), -1);
    Values values;
    for (int i = 0; i < parameters.getPropertyCount(); ++i)
        values[parameters.getProperty(i)->getID()] = parameters.getProperty(i)->getCurrentValue();
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

static double timeBaseIn(const Orbel::CPresetStore& preset)
{
    return Core::parseDouble(preset.getString("ENV_TIME_ADJUST").c_str());
}

TEST(FactoryBank, HoldsEveryPresetAsItsTextSays)
{
    const auto& texts = factoryTexts();
    const std::string image = contentOf(LODEX_FACTORY_BANK);
    const auto bank = openedFile(Orbel::CPresetFormatFXB(), "QDT_DKS_BANK", image);
    EXPECT_GE(texts.size(), 32u);
    EXPECT_EQ(bank.getString("NumPresets"), std::to_string(texts.size()));
    EXPECT_EQ(bank.getString("CurrentPreset"), "0");
    EXPECT_EQ(bank.getChunkCount(), int(texts.size()) + 2);

    std::set<std::string> names;
    for (size_t i = 0; i < texts.size(); ++i)
    {
        SCOPED_TRACE(texts[i].name);
        char* data = nullptr;
        const long size = bank.getChunk(("PRESET" + std::to_string(i)).c_str(), &data);
        ASSERT_TRUE(data);
        const auto preset = opened("QDT_DKS_PRESET", data, size);
        EXPECT_EQ(preset.getPresetName(), texts[i].name);
        EXPECT_EQ(preset.getString("SINGLEPRESET"), texts[i].name);
        EXPECT_EQ(float(timeBaseIn(preset)), gTimeAdjustMultiplier[texts[i].timeBase]);
        EXPECT_EQ(valuesIn(preset), valuesOf(texts[i]));
        EXPECT_EQ(preset.getChunk("SystemData", &data), 0);
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
    const auto preset = openedFile(Orbel::CPresetFormatFXP(), "QDT_DKS_PRESET", image);
    EXPECT_STREQ(preset.getPresetName(), "Init");
    EXPECT_EQ(timeBaseIn(preset), 1.0);
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
