// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/CPropertyManager.h"
#include "support/Bytes.h"

#include <bit>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

using Orbel::CPropertyManager;
using Orbel::ParameterProperty;

namespace
{
using Values = std::vector<float>;

std::string record(const std::string& id, float value, size_t size = 64)
{
    return padded(padded(id, 52) + littleWord(std::bit_cast<std::uint32_t>(value)), size);
}

// The chunk of these records, as they are.
std::string chunkOf(const std::string& records, std::uint32_t count)
{
    const auto size = std::uint32_t(records.size());
    std::string header = padded("ppCh", 20);
    for (const auto number : {48u, 4096u, 0u, size, size, size / count, count})
        header += littleWord(number);
    return header + records;
}

class CPropertyManagerTest : public testing::Test
{
protected:
    CPropertyManagerTest()
    {
        int number = 0;
        for (const char* id : {"A", "P3Q", "LONGER"})
            create(id, 10 + number++);
    }

    ParameterProperty* create(const std::string& id, int parameterId)
    {
        Orbel::ParameterPropertySetup setup;
        setup.id = id;
        setup.maximum = 10.0f;
        setup.value = setup.defaultValue = 1.0f;
        setup.parameterId = parameterId;
        return manager.CreateProperty(&setup);
    }

    Values values() const
    {
        Values all;
        for (int i = 0; i < manager.getPropertyCount(); ++i)
            all.push_back(manager.getProperty(i)->getCurrentValue());
        return all;
    }

    // The values after loading into a manager whose values are all 1.
    Values loaded(const std::string& bytes, int suffix = -1)
    {
        manager.setAllParamsToDefault();
        manager.setChunk(bytes.data(), bytes.size(), suffix, {}, nullptr);
        return values();
    }

    CPropertyManager manager;
};

struct Listener final : Orbel::ParameterChangeListener
{
    void parameterChanged(ParameterProperty* property) override
    {
        heard.push_back(property->getCurrentValue());
    }

    Values heard;
};
}

TEST_F(CPropertyManagerTest, LoadsWhatItSavedAndNothingOfADamagedChunk)
{
    manager.getProperty(0)->setValue(2.5f);
    manager.getProperty(1)->setValue(0.0f);
    manager.getProperty(2)->setValue(9.0f);
    char* data = nullptr;
    const unsigned long size = manager.getChunk(&data);
    const std::string chunk(data, size);
    EXPECT_EQ(loaded(chunk), Values({2.5f, 0, 9}));
    EXPECT_EQ(loaded(chunk.substr(0, chunk.size() - 1)), Values({1, 1, 1}));
    manager.setChunkWithIgnoreList(chunk.data(), chunk.size(), {10, 12});
    EXPECT_EQ(values(), Values({1, 0, 1}));

    manager.getProperty(2)->setValue(4.0f);
    const unsigned long part = manager.getChunkFromList(&data, {manager.getProperty(2), nullptr});
    EXPECT_EQ(loaded({data, part}), Values({1, 1, 4}));
}

TEST_F(CPropertyManagerTest, PutsEveryPropertyToItsDefaultAndTellsOfIt)
{
    Listener listener;
    for (int i = 0; i < 3; ++i)
    {
        manager.getProperty(i)->setDefaultValue(float(i + 5)); // other than the value at creation
        manager.getProperty(i)->AddListener(&listener, false);
    }
    EXPECT_EQ(manager.CreateProperty(manager.getProperty(2))->getDefaultValue(), 7.0f);
    manager.setAllParamsToDefault();
    EXPECT_EQ(listener.heard, Values({5, 6, 7}));
    EXPECT_EQ(values(), Values({5, 6, 7, 7}));
    for (int i = 0; i < 3; ++i)
        manager.getProperty(i)->ForgetListener(&listener);
}

TEST_F(CPropertyManagerTest, EachRecordIsTakenOrSkippedOnItsOwn)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const auto load = [&](const std::string& one, const std::string& two)
    { return loaded(chunkOf(one + two, 2)); };
    EXPECT_EQ(load(record("GONE", 5), record("LONGER", 3)), Values({1, 1, 3}));
    EXPECT_EQ(load(record("A", 1000), record("P3Q", -1000)), Values({10, 0, 1}));
    EXPECT_EQ(load(record("A", nan), record("P3Q", 2)), Values({1, 2, 1}));
    EXPECT_EQ(load(record("A", 2, 128), record("P3Q", 3, 128)), Values({2, 3, 1}));
}

TEST_F(CPropertyManagerTest, ASuffixStandsInForTheFirstNumberOfAnId)
{
    for (const char* id : {"P7Q", "Z0Z", "M7", "7"})
        create(id, 50);
    const auto hit = [&](const char* id)
    {
        const Values after = loaded(chunkOf(record(id, 5), 1), 7);
        std::string names;
        for (size_t i = 0; i < after.size(); ++i)
            if (after[i] == 5.0f)
                names += manager.getProperty(int(i))->getID();
        return names;
    };
    EXPECT_EQ(hit("P3Q"), "P7Q");
    EXPECT_EQ(hit("Z0Z"), "Z0Z"); // a 0 does not count as a number
    EXPECT_EQ(hit("M-4"), "M7");  // the sign belongs to the number
    EXPECT_EQ(hit("00123"), "7");
    EXPECT_EQ(hit("P4"), "");
}
