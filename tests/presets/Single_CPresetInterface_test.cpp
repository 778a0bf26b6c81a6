#include "Orbel/storage/CFileFormat.h"
#include "Sonvex/MessageBox.h"
#include "presets/IPresetEffect.h"
#include "presets/PresetImages.h"
#include "presets/Single_CPresetInterface.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <map>

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

struct User final : Sonvex::IMessageBoxPresenter
{
    User() { Sonvex::setMessageBoxPresenter(this); }
    ~User() { Sonvex::setMessageBoxPresenter(nullptr); }
    int show(Tovra::CFrame*, Sonvex::MessageBoxType, const char* title, const char* body) override
    {
        question = std::string(title) + ": " + body;
        return agrees ? 1 : 0;
    }

    bool agrees = false;
    std::string question;
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

    int exportBank(const std::string& bank)
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
    library.saveCurrentPreset((root / "a.dks").c_str());
    effect.state = "";
    EXPECT_EQ(library.getIndexFromFileName((root / "a").c_str()), 0);
    library.loadPresetFromIndex(0);
    EXPECT_EQ(effect.state, "saved");
    library.setPresetFolder((root / "new\\deep").c_str());
    EXPECT_EQ(library.getPresetFolder(), root / "new/deep/");
    EXPECT_TRUE(fs::is_directory(root / "new/deep"));
}

TEST_F(Single_CPresetInterfaceTest, RenamesWithinTheFolderAndNeverOverAnotherPreset)
{
    putPresets({"group/07-old.dks", "other.DKS", "taken.DKS", "xx-y.dks"});
    const auto rename = [&](const char* from, const char* to)
    {
        const int index = library.getIndexFromFileName((root / from).c_str());
        library.resetIndex();
        library.renamePreset(index, to);
        return std::string(library.getFileNameFromIndex(library.getCurrentIndex()));
    };
    EXPECT_EQ(rename("group/07-old", "New"), root / "group/07-New.dks");
    EXPECT_EQ(rename("group/07-New", "../../up"), root / "group/07-.._.._up.dks");
    EXPECT_EQ(rename("group/07-.._.._up", ".."), root / "group/07-_.dks");
    EXPECT_EQ(rename("group/07-_", ""), "");
    EXPECT_EQ(rename("xx-y", ".z"), root / "_z.dks");
    library.setFileExtension(".DKS");
    EXPECT_EQ(rename("other", "taken"), "");
    EXPECT_EQ(filesBelow(root.path), (Names{"_z.dks", "group/07-_.dks", "other.DKS", "taken.DKS"}));
    EXPECT_EQ(root.content("taken.DKS").substr(60), "taken.DKS");
}

TEST_F(Single_CPresetInterfaceTest, DeletesOnlyWhatTheUserAgreesTo)
{
    User user;
    putPresets({"a%s.dks", "b.dks"});
    library.loadPresetFromIndex(1);
    library.deletePreset(0);
    EXPECT_EQ(user.question,
              "Delete Preset: Do you really want to delete \"a%s\" ?\n(" + root / "a%s.dks" + ")");
    EXPECT_EQ(listed(), (Names{":a%s", ":b"}));
    EXPECT_EQ(library.getCurrentIndex(), 1);
    user.agrees = true;
    for (const int left : {1, 0})
    {
        library.deletePreset(0);
        EXPECT_EQ(library.getNumPresets(), left);
        EXPECT_EQ(library.getCurrentIndex(), left - 1);
    }
}

TEST_F(Single_CPresetInterfaceTest, ImportsABankIntoAFolderNamedAfterIt)
{
    library.setPresetFolder(root.path.c_str());
    const std::string bank = bankOf({{0, storeNamed("Kick")}, {1, storeNamed("07-Old number")}}, "2");
    const std::string image = Orbel::kPresetFormatFXB->wrap(bank.data(), long(bank.size()));
    for (const char* name : {"My %s bank.fxb", "...fxb"})
        EXPECT_EQ(library.importBankFromFile(folder.put(name, image).c_str()), 1);
    EXPECT_EQ(filesBelow(root.path), (Names{"My %s bank/01-Kick.dks", "My %s bank/02-07-Old number.dks",
                                            "_/01-Kick.dks", "_/02-07-Old number.dks"}));
    library.rescanPresets();
    library.loadPresetFromIndex(0);
    EXPECT_EQ(effect.state, storeNamed("Kick")) << "to the byte";
    EXPECT_EQ(library.importBankFromFile(folder.put("empty.fxb", image.substr(0, 160)).c_str()), 0);

    library.setFactoryBank(image);
    library.restoreBank();
    EXPECT_TRUE(fs::exists(root / "01-Kick.dks") && fs::exists(root / "02-07-Old number.dks"));
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
    EXPECT_EQ(exportBank(bankOf(presets, "8")), 1);
    EXPECT_EQ(filesBelow(root.path),
              (Names{"out/01-.._.._.._tmp_evil_.dks", "out/02-_.dks", "out/06-%n%s\\:.dks", "out/08-.dks"}));
    std::string large = storeNamed("Large");
    large.replace(40, 4, std::string("\0\0\0\3", 4)); // unpacks to no more than 48 MiB, as it says
    struct Case
    {
        const char* what;
        std::string bank;
        int answer;
        size_t files;
    };
    const Case table[] = {
        {"no count", bankOf(presets, nullptr), 0, 0},
        {"below 1", bankOf(presets, "-1"), 1, 0},
        {"billions", bankOf(presets, "99999999999999"), 1, 5},
        {"more than 64 MiB", bankOf({{0, large}, {1, large}, {2, storeNamed("x")}}, "3"), 1, 2},
        {"older bank", std::string(6860, '\0'), 1, 32},
    };
    for (const Case& each : table)
    {
        SCOPED_TRACE(each.what);
        fs::remove_all(root / "out");
        EXPECT_EQ(exportBank(each.bank), each.answer);
        EXPECT_EQ(filesBelow(root.path).size(), each.files);
    }
}
