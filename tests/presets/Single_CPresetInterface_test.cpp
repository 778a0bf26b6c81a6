#include "Orbel/storage/CFileFormat.h"
#include "presets/IPresetEffect.h"
#include "presets/PresetImages.h"
#include "presets/Single_CPresetInterface.h"
#include "support/SystemCalls.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <map>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

namespace
{
// An effect whose state is one text.
struct Effect final : IPresetEffect
{
    void setPresetType(int newType) override { type = newType; }
    long getDataChunk(char** out) override
    {
        EXPECT_EQ(type, 1);
        *out = state.data();
        return long(state.size());
    }
    void setDataChunk(char* data, long size) override
    {
        EXPECT_EQ(type, 1);
        state.assign(data, size_t(size));
    }
    void setPresetName(const char* newName) override { name = newName; }

    int type = 0;
    std::string state, name;
};

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

class Single_CPresetInterfaceTest : public testing::Test
{
protected:
    Single_CPresetInterfaceTest()
    {
        Orbel::kPresetFormatFXP->setPluginID(0x51444B43);
        Orbel::kPresetFormatFXB->setPluginID(0x51444B43);
    }

    // Files of the library's folder, each a preset that holds its own path; then a scan.
    void putPresets(const Names& paths)
    {
        for (const std::string& path : paths)
        {
            fs::create_directories(fs::path(root / path).parent_path());
            Orbel::kPresetFormatFXP->saveToFile((root / path).c_str(), path.data(), long(path.size()));
        }
        library.setPresetFolder(root.path.c_str());
    }

    Names listed() const
    {
        Names names;
        for (int i = 0; i < library.getNumPresets(); ++i)
            names.push_back(std::string(library.getSubGroupName(i)) + ":" + library.getPresetName(i));
        return names;
    }

    // All files below a folder, sorted, with the folder's path cut off.
    static Names filesBelow(const fs::path& folder)
    {
        std::set<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(folder))
            if (!entry.is_directory())
                names.insert(entry.path().lexically_relative(folder).string());
        return {names.begin(), names.end()};
    }

    PresetResult exportBank(const std::string& bank)
    {
        return library.exportBankToFolder((root / "out").c_str(), bank.data(), long(bank.size()));
    }

    const TempFolder folder;
    TempFolder root;
    Effect effect;
    Single_CPresetInterface library{effect};
};
}

TEST_F(Single_CPresetInterfaceTest, ListsOneLevelOfGroupsFirstAndAllByNameInEitherCase)
{
    const std::string longest(251, 'n'); // with its extension, of this file system
    putPresets({longest + ".dks", "b.dks", "Alpha.dks", "alpha.dks", "a\\c:d.DKS", ".hidden.dks", "x.fxp",
                "plain", "Zoo/kick.dks", "Ape/Snare.dks", "Ape/50%s.dks", "Ape/deep/no.dks", "\xC3\xA4.dks",
                "\xC3\x84!.dks"});
    fs::create_directory_symlink(root.path, root / "loop");
    fs::create_symlink("nowhere", root / "gone.dks");
    fs::create_directory(root / "folder.dks");
    library.rescanPresets();
    Names names = listed();
    std::erase_if(names, [](const std::string& name) { return name.starts_with("loop:"); });
    EXPECT_EQ(names, (Names{"Ape:50%s", "Zoo:kick", "Ape:Snare", ":Alpha", ":alpha", ":a\\c:d", ":b", ":gone",
                            ":" + longest, ":\xC3\xA4", ":\xC3\x84!"}));
    EXPECT_EQ(library.getNumPresets(), 11 + 8) << "a link to the folder itself shows its files once more";
}

TEST_F(Single_CPresetInterfaceTest, StepsRoundAndLoads)
{
    library.setNextPreset(); // no folder yet
    putPresets({"1.dks"});
    library.setNextPreset(); // nor a second one
    library.loadPresetFromIndex(1);
    EXPECT_EQ(effect.name, "");

    putPresets({"2.dks", "3.dks"});
    const auto steps = [&](bool forward)
    {
        std::string walked;
        for (int i = 0; i < 4; ++i, walked += effect.state[0])
        {
            forward ? library.setNextPreset() : library.setPrevPreset();
            EXPECT_EQ(effect.state, effect.name + ".dks");
        }
        return walked;
    };
    EXPECT_EQ(steps(true), "1231");
    EXPECT_EQ(steps(false), "3213");

    root.put("2.dks", "no preset");
    library.loadPresetFromIndex(1);
    EXPECT_EQ(effect.state, "3.dks") << "a bad file loads as nothing";
    EXPECT_EQ(effect.name, "2");
}

TEST_F(Single_CPresetInterfaceTest, SavesWhatItFindsAndLoadsAgain)
{
    putPresets({"b.dks"});
    effect.state = "saved";
    EXPECT_EQ(library.saveCurrentPreset((root / "a.dks").c_str()).written, 1);
    effect.state = "";
    EXPECT_EQ(library.getIndexFromFileName((root / "a").c_str()), 0);
    library.loadPresetFromIndex(0);
    EXPECT_EQ(effect.state, "saved");
    library.setPresetFolder((root / "new\\deep").c_str());
    EXPECT_EQ(library.getPresetFolder(), root / "new/deep/");
    EXPECT_TRUE(fs::is_directory(root / "new/deep"));
}

TEST_F(Single_CPresetInterfaceTest, TheCurrentPresetStaysTheSameOneWhateverOtherInstancesDo)
{
    putPresets({"b.dks", "d.DKS"});
    const auto current = [&] { return std::string(library.getPresetName(library.getCurrentIndex())); };
    library.setIndexToFile((root / "d").c_str()); // in either case of its ending
    EXPECT_EQ(current(), "d");
    Effect otherEffect;
    Single_CPresetInterface other(otherEffect);
    other.setPresetFolder(root.path.c_str());
    for (const char* name : {"a.dks", "c.dks", "group/x.dks"})
    {
        fs::create_directories(fs::path(root / name).parent_path());
        other.saveCurrentPreset((root / name).c_str());
        library.rescanPresets();
        EXPECT_EQ(current(), "d") << name;
    }
    EXPECT_EQ(library.getCurrentIndex(), 4);
    EXPECT_TRUE(library.deletePreset(library.getCurrentIndex()));
    EXPECT_EQ(filesBelow(root.path), (Names{"a.dks", "b.dks", "c.dks", "group/x.dks"}));
    EXPECT_EQ(library.getCurrentIndex(), -1) << "none, so that the next save hits no neighbour";
    library.setIndexToFile((root / "b.dks").c_str());
    EXPECT_TRUE(other.deletePreset(other.getIndexFromFileName((root / "b.dks").c_str())));
    library.rescanPresets();
    EXPECT_EQ(library.getCurrentIndex(), -1);
}

TEST_F(Single_CPresetInterfaceTest, AFileThatWasLoadedIsTheCurrentPresetIfItLiesInTheLibrary)
{
    putPresets({"a.dks", "group/b.dks", "group/deep/c.dks"});
    fs::create_directory_symlink(root.path, folder / "link");
    const std::string outside = folder.put("outside.dks", root.content("a.dks"));
    const std::pair<std::string, int> cases[] = {
        {root / "group/b.dks", 0}, {folder / "link/group/b.dks", 0}, {outside, -1},
        {root / "a.dks", 1},       {root / "group/deep/c.dks", -1},  {root / "./group/../a.dks", 1},
    };
    for (const auto& [path, index] : cases)
    {
        library.loadPreset(path.c_str());
        EXPECT_EQ(library.getCurrentIndex(), index) << path;
    }
    library.loadPreset(root.put("none.dks", "no preset").c_str());
    EXPECT_EQ(library.getCurrentIndex(), 1) << "what holds no preset changes nothing";
}

TEST_F(Single_CPresetInterfaceTest, RenamesWithinTheFolderAndNeverOverAnotherPreset)
{
    putPresets({"group/07-old.dks", "other.DKS", "taken.DKS", "xx-y.dks"});
    const auto rename = [&](const char* from, const char* to)
    {
        const int index = library.getIndexFromFileName((root / from).c_str());
        library.resetIndex();
        const PresetResult result = library.renamePreset(index, to);
        return result ? library.getFileNameFromIndex(library.getCurrentIndex()) : result.problem;
    };
    EXPECT_EQ(rename("group/07-old", "New"), root / "group/07-New.dks");
    EXPECT_EQ(rename("group/07-New", "../../up"), root / "group/07-.._.._up.dks");
    EXPECT_EQ(rename("group/07-.._.._up", ".."), root / "group/07-_.dks");
    EXPECT_EQ(rename("group/07-_", ""), "a preset needs a name");
    EXPECT_EQ(rename("xx-y", ".z"), root / "_z.dks");
    EXPECT_EQ(rename("other", "taken"), "File exists");
    EXPECT_EQ(rename("gone", "x"), "there is no such preset");
    EXPECT_EQ(filesBelow(root.path), (Names{"_z.dks", "group/07-_.dks", "other.DKS", "taken.DKS"}));
    EXPECT_EQ(root.content("taken.DKS").substr(60), "taken.DKS");
}

TEST_F(Single_CPresetInterfaceTest, SaysWhyNothingWasWritten)
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

TEST_F(Single_CPresetInterfaceTest, SaysThatAFolderMayNotBeWritten)
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

TEST_F(Single_CPresetInterfaceTest, ImportsABankIntoAFolderNamedAfterIt)
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

TEST_F(Single_CPresetInterfaceTest, RestoresManyPresetsWithOneWalkAndOneFlush)
{
    std::map<int, std::string> presets;
    for (int i = 0; i < 32; ++i)
        presets[i] = storeNamed("Factory");
    const std::string bank = bankOf(presets, "32");
    const std::string image = Orbel::kPresetFormatFXB->wrap(bank.data(), long(bank.size()));
    library.setFactoryBank(image);
    library.setPresetFolder(root.path.c_str());
    const auto calls = countSystemCalls([&] { return library.restoreBank().written == 32; });
    if (!calls)
        GTEST_SKIP() << "no right to trace a process";
    EXPECT_TRUE(calls->succeeded);
    EXPECT_EQ(calls->of({SYS_fsync, SYS_fdatasync, SYS_syncfs, SYS_sync}), 1);
    EXPECT_EQ(calls->of({SYS_getdents64}), 2); // all entries, and the end
    EXPECT_EQ(filesBelow(root.path).size(), 32u);
}

TEST_F(Single_CPresetInterfaceTest, WritesOnlyPresetsAndOnlyIntoTheFolder)
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
