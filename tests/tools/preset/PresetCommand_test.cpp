// SPDX-License-Identifier: GPL-3.0-or-later
// "lodex preset" and "lodex render --preset" as processes.

#include "presets/PresetImages.h"
#include "tools/common/LodexProcess.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
class PresetCommand : public LodexProcess
{
protected:
    json shown(const std::string& arguments)
    {
        const Result result = lodex("preset show --json " + arguments);
        EXPECT_EQ(result.code, 0) << result.err;
        EXPECT_EQ(result.err, "");
        return json::parse(result.out);
    }

    std::string preset = images::preset("07-Pump", {{"STRENGTH", 0.75f}, {"RELEASTIME", 321.5f}},
                                        "0.33333334", {{"TRIGGERSENSE", 1.0f}});
};
}

TEST_F(PresetCommand, ShowsAPresetAsJSONAndAsATable)
{
    folder.put("a.wav", images::file(preset)); // the name says nothing
    const json object = shown("a.wav");
    EXPECT_EQ(object["kind"], "preset");
    EXPECT_EQ(object["name"], "Pump");
    EXPECT_EQ(object["time_adjust"].get<float>(), 1.0f / 3.0f);
    EXPECT_EQ(object["parameters"].size(), 15u);
    EXPECT_EQ(object["parameters"]["STRENGTH"], 0.75);
    EXPECT_EQ(object["texts"]["STRENGTH"], "75.00%");
    EXPECT_EQ(shown("a.wav --as state")["parameters"]["TRIGGERSENSE"], 1.0);

    const Result table = lodex("preset show a.wav");
    EXPECT_THAT(table.out, StartsWith("preset \"Pump\", time base 1/8T\n"));
    EXPECT_THAT(table.out, HasSubstr("\n  STRENGTH            0.75   75.00%\n"));
}

TEST_F(PresetCommand, ShowsAnyNameAndHarmsNoTerminal)
{
    const std::string name = "%n%s\x1b[2J\xff\xc2\x9b\n\"\xc3\xa4";
    folder.put("a.dks", images::file(images::preset(name, {})));
    EXPECT_EQ(shown("a.dks")["name"], "%n%s\x1b[2J\xef\xbf\xbd\xc2\x9b\n\"\xc3\xa4");
    EXPECT_THAT(lodex("preset show a.dks").out,
                StartsWith("preset \"%n%s?[2J\xef\xbf\xbd??\"\xc3\xa4\", time"));
    EXPECT_EQ(lodex("preset check a.dks").out.find_first_of("\x1b\xff\x9b"), std::string::npos);
}

TEST_F(PresetCommand, ConvertsToCurrentFiles)
{
    folder.put("old", images::rawProgram("Old", 0.5f));
    EXPECT_EQ(lodex("preset convert old new.dks").out, "new.dks: 1 preset\n");
    EXPECT_EQ(folder.content("new.dks").substr(28, 28), padded("new", 28));
    EXPECT_EQ(shown("new.dks")["parameters"]["STRENGTH"], 0.5);
    EXPECT_EQ(shown("new.dks")["name"], "Old");

    const auto named = [](const std::string& name) { return images::preset(name, {}); };
    folder.put("bank.fxb", images::bankFile(images::bank({named("../../up"), "junk", named("Kick")})));
    const Result result = lodex("preset convert bank.fxb sub/bank");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "sub/bank: 2 presets\n");
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path / "sub"))
        names.push_back(std::filesystem::relative(entry.path(), folder.path));
    EXPECT_THAT(
        names, testing::UnorderedElementsAre("sub/bank", "sub/bank/01-.._.._up.dks", "sub/bank/03-Kick.dks"));
    EXPECT_EQ(shown("sub/bank/01-.._.._up.dks")["name"], "../../up");
    EXPECT_EQ(folder.names().size(), 4u);
}

TEST_F(PresetCommand, OverwritesNothingUnlessForced)
{
    folder.put("in", preset);
    folder.put("bank", images::bank({preset, preset}));
    folder.put("a.dks", "as it was");
    std::filesystem::create_directory(folder.path / "sub");
    folder.put("sub/02-Pump.dks", "as it was");
    const auto before = folder.names();
    for (const char* arguments : {"in a.dks", "bank sub", "bank a.dks/sub", "in nowhere/a.dks"})
    {
        SCOPED_TRACE(arguments);
        const Result result = lodex(std::string("preset convert ") + arguments);
        EXPECT_EQ(result.code, 2);
        EXPECT_THAT(result.err, StartsWith("lodex: "));
        EXPECT_EQ(folder.names(), before);
        EXPECT_EQ(folder.content("a.dks"), "as it was");
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path / "sub"), {}), 1);
    }
    EXPECT_EQ(lodex("preset convert in a.dks --force").code, 0);
    EXPECT_EQ(lodex("preset convert --force bank sub").code, 0);
    EXPECT_EQ(shown("a.dks")["name"], "Pump");
    EXPECT_EQ(shown("sub/02-Pump.dks")["name"], "Pump");
}

TEST_F(PresetCommand, ChecksManyFiles)
{
    folder.put("a", images::file(preset));
    folder.put("b", images::rawBank(0.5f));
    Result result = lodex("preset check a b");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "a: preset 'Pump'\nb: older bank of 32 presets\n");
    folder.put("cut", images::file(preset).substr(0, 100));
    result = lodex("preset check cut a nowhere .");
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, StartsWith("cut: damaged: it is cut off at byte 100 of "));
    EXPECT_THAT(result.out, HasSubstr("\na: preset 'Pump'\nnowhere: damaged: No such file or directory\n"
                                      ".: damaged: Is a directory\n"));
}

TEST_F(PresetCommand, RendersWithAPresetAndThenTheSets)
{
    putNoise("in.wav", 44100, 60000);
    folder.put("a.dks", images::file(preset));
    folder.put("bank", images::bankFile(images::bank({images::preset("A", {}), preset})));
    folder.put("broken", "no preset");
    ASSERT_EQ(
        lodex("render in.wav ref.wav --timebase 1/8T --link off --set STRENGTH=0.75 --set RELEASTIME=321.5 "
              "--link on --set ATTACKTIME=5")
            .code,
        0);
    for (const char* arguments : {"--preset a.dks", "--preset bank", "--timebase 1/2 --preset a.dks"})
    {
        ASSERT_EQ(lodex(std::string("render in.wav out.wav --set ATTACKTIME=5 ") + arguments).code, 0);
        EXPECT_TRUE(same("out.wav", "ref.wav")) << arguments;
    }
    const Result result = lodex("render in.wav new.wav --preset broken");
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err, "lodex: cannot read broken: it is in none of the forms that a preset can have\n");
    EXPECT_EQ(folder.names().count("new.wav"), 0u);
}
