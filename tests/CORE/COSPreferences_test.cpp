#include "CORE/COSPreferences.h"
#include "CORE/Threads.h"
#include "TempFolder.h"

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
    COSPreferences writer("TORVANE", "QDT Brellic Multi");
    for (const char* text : texts)
        for (const char* key : {"PresetFolder", "a=b", "a", "", "new\nline"})
            EXPECT_TRUE(writer.setString(key, (std::string(key) + text).c_str()));
    const COSPreferences reader("TORVANE", "QDT Brellic Multi");
    for (const char* key : {"PresetFolder", "a=b", "a", "", "new\nline"})
        EXPECT_EQ(reader.getString(key, "x"), std::string(key) + "=");
    for (const char* text : texts)
    {
        writer.setString("key", text);
        EXPECT_EQ(reader.getString("key", "x"), text);
    }
    EXPECT_EQ(reader.getString("none", "fallback"), "fallback");
    EXPECT_EQ(reader.getString("none", nullptr), "");
    EXPECT_EQ(COSPreferences("TORVANE", "Other").getString("a", "x"), "x");
}

TEST_F(Preferences, FillTheCallersBufferAndNoMore)
{
    COSPreferences preferences("TORVANE", "name");
    const std::string value(300, 'v');
    preferences.setString("key", value.c_str());
    char out[258];
    std::fill(std::begin(out), std::end(out), '#');
    preferences.getString("key", out, nullptr);
    EXPECT_EQ(out, value.substr(0, 255));
    EXPECT_EQ(out[256], '#');
    EXPECT_EQ(preferences.getString("key", ""), value);
}

TEST_F(Preferences, NeverLeaveTheirFolderAndReadingCreatesNothing)
{
    const COSPreferences untouched("TORVANE", "name");
    EXPECT_EQ(untouched.getString("key", "x"), "x");
    EXPECT_TRUE(folder.names().empty());

    for (const char* name : {"../../escape", "..", "", "a/b\n", "/etc/x"})
        EXPECT_TRUE(COSPreferences("../up", name).setString("key", "value")) << name;
    EXPECT_TRUE(COSPreferences("../up", std::string(1000, 'n').c_str()).setString("key", "value"));
    EXPECT_EQ(folder.names(), std::set<std::string>{"___up"});
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder / "___up"))
        files.insert(entry.path().filename().string());
    EXPECT_EQ(files, (std::set<std::string>{"___.._escape.conf", "__.conf", "_.conf", "a_b_.conf",
                                            "_etc_x.conf", std::string(200, 'n') + ".conf"}));
}

TEST_F(Preferences, LeaveForeignLinesAndDamagedFilesAlone)
{
    std::filesystem::create_directory(folder / "T");
    folder.put("T/name.conf", "no equals sign\nother=1\nkey=old\n\nkey=doubled\nlast=3");
    COSPreferences preferences("T", "name");
    EXPECT_EQ(preferences.getString("key", ""), "old");
    EXPECT_EQ(preferences.getString("no equals sign", "x"), "x");
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
