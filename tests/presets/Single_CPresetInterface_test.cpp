// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetLibrary.h"

using Single_CPresetInterfaceTest = PresetLibrary;

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
