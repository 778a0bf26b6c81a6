// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/COSPreferences.h"
#include "CORE/Threads.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

class Preferences : public testing::Test
{
protected:
    TempFolder folder;
    TempEnvironment config{"LODEX_CONFIG_HOME", folder.path.c_str()};
};

TEST_F(Preferences, AreKeptAsTheyWereSetWhateverTheyHold)
{
    const char* const texts[] = {
        "", "/home/x/My Presets/", "100% %s", "a=b=c", "two\nlines\r\n", "back\\slash\\n\\", "="};
    const char* const keys[] = {"PresetFolder", "a=b", "a", "", "new\nline"};
    COSPreferences writer("TORVANE", "100% %n %s");
    for (const char* text : texts)
        for (const char* key : keys)
            EXPECT_TRUE(writer.setString(key, (std::string(key) + text).c_str()));
    const COSPreferences reader("TORVANE", "100% %n %s");
    for (const char* key : keys)
        EXPECT_EQ(reader.getString(key, "x"), std::string(key) + "=");
    for (const char* text : texts)
    {
        writer.setString("key", text);
        EXPECT_EQ(reader.getString("key", "x"), text);
    }
    EXPECT_EQ(reader.getString("none", "fallback"), "fallback");
    EXPECT_EQ(COSPreferences("TORVANE", "Other").getString("a", "x"), "x");
}

TEST_F(Preferences, NeverLeaveTheirFolderAndReadingCreatesNothing)
{
    const COSPreferences untouched("TORVANE", "name");
    EXPECT_EQ(untouched.getString("key", "x"), "x");
    EXPECT_TRUE(folder.names().empty());

    EXPECT_TRUE(COSPreferences("../up", "../../escape").setString("key", "value"));
    EXPECT_TRUE(std::filesystem::exists(folder / "___up/___.._escape.conf"));
}

TEST_F(Preferences, LeaveUnknownLinesAndDamagedFilesAlone)
{
    std::filesystem::create_directory(folder / "T");
    folder.put("T/name.conf", "no equals sign\nother=1\nkey=old\n\nkey=doubled\nlast=3");
    COSPreferences preferences("T", "name");
    EXPECT_EQ(preferences.getString("key", ""), "old");
    EXPECT_TRUE(preferences.setString("key", "new"));
    EXPECT_EQ(folder.content("T/name.conf"), "no equals sign\nother=1\n\nlast=3\nkey=new\n");

    const std::string huge(3 << 20, 'x');
    folder.put("T/name.conf", "key=1\n" + huge);
    EXPECT_EQ(preferences.getString("key", "x"), "x");
    EXPECT_FALSE(preferences.setString("key", "2"));
    EXPECT_EQ(folder.content("T/name.conf").size(), huge.size() + 6);
}

TEST_F(Preferences, LoseNothingWhenSeveralInstancesStoreAtOnce)
{
    const auto store = [](void* argument) -> void*
    {
        COSPreferences preferences("TORVANE", "shared");
        for (int i = 0; i < 10; ++i)
            preferences.setString((static_cast<char*>(argument) + std::to_string(i)).c_str(), "stored");
        return nullptr;
    };
    COSPreferences preferences("TORVANE", "shared");
    const std::string earlier(3000, 'e');
    preferences.setString("earlier", earlier.c_str());

    char names[][2] = {"a", "b", "c"};
    Core::Threads::ThreadHandle writers[3];
    for (int i = 0; i < 3; ++i)
        writers[i] = Core::Threads::createThread(store, names[i], 0);
    for (int i = 0; i < 200; ++i)
        EXPECT_EQ(preferences.getString("earlier", "lost"), earlier);
    for (const auto& writer : writers)
        Core::Threads::waitForThreadDone(writer);
    for (const std::string name : {"a", "b", "c"})
        for (int i = 0; i < 10; ++i)
            EXPECT_EQ(preferences.getString((name + std::to_string(i)).c_str(), "lost"), "stored");
}
