// SPDX-License-Identifier: GPL-3.0-or-later
// Banks that become files: import, export, the factory presets, and what can fail.
#include "presets/PresetImages.h"
#include "presets/PresetLibrary.h"
#include "support/SystemCalls.h"

#include <map>
#include <sys/stat.h>
#include <sys/syscall.h>

namespace
{
std::string storeNamed(const char* name, const char* id = "QDT_DKS_PRESET")
{
    return images::store(id, name, {{"X", "payload"}});
}

std::string bankOf(const std::map<int, std::string>& presets, const char* count)
{
    images::Chunks chunks;
    for (const auto& [number, preset] : presets)
        chunks.emplace_back("PRESET" + std::to_string(number), preset);
    if (count)
        chunks.emplace_back("NumPresets", count);
    return images::store("QDT_DKS_BANK", "", chunks);
}

class PresetWriterTest : public PresetLibrary
{
protected:
    PresetResult exportBank(const std::string& bank)
    {
        return library.exportBankToFolder((root / "out").c_str(), bank.data(), long(bank.size()));
    }
};
}

TEST_F(PresetWriterTest, ImportsABankIntoAFolderNamedAfterIt)
{
    library.setPresetFolder(root.path.c_str());
    const std::string bank = bankOf({{0, storeNamed("Kick")}, {1, storeNamed("07-Old number")}}, "2");
    const std::string image = Orbel::kPresetFormatFXB->wrap(bank.data(), long(bank.size()));
    for (const char* name : {"My %s bank.fxb", "...fxb"})
        EXPECT_EQ(library.importBankFromFile(folder.put(name, image).c_str()).written, 2);
    EXPECT_EQ(filesBelow(root.path), (Names{"My %s bank/01-Kick.dks", "My %s bank/02-07-Old number.dks",
                                            "_/01-Kick.dks", "_/02-07-Old number.dks"}));
    library.rescanPresets();
    library.loadPresetFromIndex(0);
    EXPECT_EQ(effect.state, storeNamed("Kick")) << "to the byte";

    library.setFactoryBank(image);
    EXPECT_TRUE(library.restoreBank());
    EXPECT_TRUE(fs::exists(root / "01-Kick.dks") && fs::exists(root / "02-07-Old number.dks"));
}

TEST_F(PresetWriterTest, WritesOnlyPresetsAndOnlyIntoTheFolder)
{
    library.setPresetFolder((root / "library").c_str());
    const std::map<int, std::string> presets = {{0, storeNamed("../../../tmp/evil\n")},
                                                {1, storeNamed("..")},
                                                {2, std::string(184, 'x')},
                                                {3, storeNamed("Other", "QDT_DKS_OTHER")},
                                                {5, storeNamed("%n%s\\:")},
                                                {6, std::string("QDTDKSCNK\0", 10) + "x"},
                                                {7, storeNamed("")},
                                                {8, storeNamed("Not counted")}};
    const PresetResult result = exportBank(bankOf(presets, "8"));
    EXPECT_EQ(result.problem, "preset 2: it is of an older form, which a bank cannot hold");
    EXPECT_EQ(result.written, 4);
    EXPECT_EQ(filesBelow(root.path),
              (Names{"out/01-.._.._.._tmp_evil_.dks", "out/02-_.dks", "out/06-%n%s\\:.dks", "out/08-.dks"}));
    std::string large = storeNamed("Large");
    large.replace(40, 4, std::string("\0\0\0\3", 4)); // unpacks to no more than 48 MiB, as it says
    struct Case
    {
        const char* what;
        std::string bank;
        const char* problem;
        int written;
    };
    const Case table[] = {
        {"no count", bankOf(presets, nullptr), "it does not tell how many presets it holds", 0},
        {"below 1", bankOf(presets, "-1"), "it holds no preset", 0},
        {"billions", bankOf(presets, "99999999999999"), "preset 2: ", 5},
        {"more than 64 MiB", bankOf({{0, large}, {1, large}, {2, storeNamed("x")}}, "3"),
         "preset 1: it would unpack to 50331648 bytes", 2},
        {"older bank", std::string(6860, '\0'), "", 32},
        {"no bank", storeNamed("x"), "its id is \"QDT_DKS_PRESET\", not \"QDT_DKS_BANK\"", 0},
    };
    for (const Case& each : table)
    {
        SCOPED_TRACE(each.what);
        fs::remove_all(root / "out");
        const PresetResult exported = exportBank(each.bank);
        EXPECT_TRUE(exported.problem.starts_with(each.problem)) << exported.problem;
        EXPECT_EQ(exported.written, each.written);
        EXPECT_EQ(filesBelow(root.path).size(), size_t(each.written));
    }
}
TEST_F(PresetWriterTest, RestoresManyPresetsWithOneWalkAndOneFlush)
{
    std::map<int, std::string> presets;
    for (int i = 0; i < 32; ++i)
        presets[i] = storeNamed("Factory");
    const std::string bank = bankOf(presets, "32");
    const std::string image = Orbel::kPresetFormatFXB->wrap(bank.data(), long(bank.size()));
    library.setFactoryBank(image);
    library.setPresetFolder(root.path.c_str());
    int flushes = 0, walks = 0;
    const auto count = [&](long call)
    {
        flushes += call == SYS_fsync || call == SYS_fdatasync || call == SYS_syncfs || call == SYS_sync;
        walks += call == SYS_getdents64;
        return true;
    };
    const auto restored = watchSystemCalls([&] { return library.restoreBank().written == 32; }, count);
    if (!restored)
        GTEST_SKIP() << "no right to trace a process";
    EXPECT_TRUE(*restored);
    EXPECT_EQ(flushes, 1);
    EXPECT_EQ(walks, 2); // all entries, and the end
    EXPECT_EQ(filesBelow(root.path).size(), 32u);
}

TEST_F(PresetWriterTest, SaysWhyNothingWasWritten)
{
    const std::string bank = bankOf({{0, storeNamed("Kick")}, {1, storeNamed("Bass")}}, "2");
    const std::string image = Orbel::kPresetFormatFXB->wrap(bank.data(), long(bank.size()));
    library.setPresetFolder(root.path.c_str());
    mkfifo((root / "pipe.dks").c_str(), 0600); // opening it would wait
    fs::create_directory(root / "01-Kick.dks");
    root.put("file", "");
    effect.state = "state";
    const auto pathOf = [&](const char* name) { return root / name; };
    EXPECT_EQ(library.saveCurrentPreset(pathOf("pipe.dks").c_str()).problem, "it is not a regular file");
    EXPECT_EQ(library.saveCurrentPreset(pathOf("01-Kick.dks").c_str()).problem, "Is a directory");
    EXPECT_EQ(library.saveCurrentPreset(pathOf("no/x.dks").c_str()).problem, "No such file or directory");
    EXPECT_EQ(library.importBankFromFile(pathOf("pipe.dks").c_str()).problem, "it is not a regular file");
    EXPECT_EQ(library.importBankFromFile(pathOf("none").c_str()).problem, "No such file or directory");
    EXPECT_EQ(library.importBankFromFile(folder.put("x", image.substr(0, 100)).c_str()).problem,
              "it is cut off at byte 100 of 160 of its header");
    EXPECT_EQ(library.restoreBank().problem, "there are no factory presets");
    library.loadPreset(pathOf("pipe.dks").c_str());

    library.setFactoryBank(image); // one of the two names is a folder
    const PresetResult restored = library.restoreBank();
    EXPECT_EQ(restored.problem, "01-Kick.dks: Is a directory");
    EXPECT_EQ(restored.written, 1);
    EXPECT_EQ(filesBelow(root.path), (Names{"02-Bass.dks", "file", "pipe.dks"}));
    const auto exported =
        library.exportBankToFolder((root / "file/x").c_str(), bank.data(), long(bank.size()));
    EXPECT_EQ(exported.problem, "Not a directory");
    EXPECT_EQ(exported.written, 0);
}

TEST_F(PresetWriterTest, SaysThatAFolderMayNotBeWritten)
{
    if (geteuid() == 0 && seteuid(65534) != 0)
        GTEST_SKIP() << "for root no folder is locked";
    const TempFolder own; // of the user that asks
    fs::create_directory(own / "locked");
    library.setPresetFolder((own / "locked").c_str());
    effect.state = "state";
    library.saveCurrentPreset((own / "locked/a.dks").c_str());
    const std::string bank = bankOf({{0, storeNamed("Kick")}}, "1");
    const std::string image = Orbel::kPresetFormatFXB->wrap(bank.data(), long(bank.size()));
    library.setFactoryBank(image);
    chmod((own / "locked").c_str(), 0500);
    const PresetResult results[] = {library.saveCurrentPreset((own / "locked/b.dks").c_str()),
                                    library.saveCurrentPreset((own / "locked/a.dks").c_str()),
                                    library.renamePreset(0, "c"),
                                    library.deletePreset(0),
                                    library.restoreBank(),
                                    library.importBankFromFile(own.put("bank.fxb", image).c_str())};
    chmod((own / "locked").c_str(), 0700);
    fs::remove_all(own / "locked");
    [[maybe_unused]] const int back = seteuid(getuid());
    for (const PresetResult& result : results)
    {
        EXPECT_TRUE(result.problem.ends_with("Permission denied")) << result.problem;
        EXPECT_EQ(result.written, 0);
    }
}
