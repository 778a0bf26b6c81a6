#include "Orbel/CPropertyManager.h"
#include "parameters/DKS.h"
#include "parameters/DKS_Mini.h"
#include "parameters/TimeAdjust.h"

#include <bit>
#include <cctype>
#include <gtest/gtest.h>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace
{
void expectSoundRows(std::span<const Orbel::ParameterPropertySetup> table)
{
    std::map<std::string, int> ids;
    for (size_t i = 0; i < table.size(); ++i)
    {
        SCOPED_TRACE(table[i].id);
        EXPECT_EQ(table[i].parameterId, int(i)) << "hosts and files remember parameters by these numbers";
        EXPECT_EQ(ids[table[i].id]++, 0) << "twice the same id";
        EXPECT_LT(table[i].minimum, table[i].maximum);
        EXPECT_LT(table[i].id.size(), 52u) << "does not fit a chunk's record";
    }
}
}

TEST(ParameterTables, RowsAreNumberedAndIdsAreUnique)
{
    expectSoundRows(DKS_Mini::ps_plain);
    expectSoundRows(DKS::ps_plain);
}

TEST(ParameterTables, TheEffectOffersTheseTenToHosts)
{
    Orbel::CPropertyManager manager;
    for (const auto& row : DKS_Mini::ps_plain)
        manager.CreateProperty(&row);
    std::vector<long> ids;
    for (int i = 0; i < manager.getAutomateAblePropertyCount(); ++i)
        ids.push_back(manager.getProperty_automateable(i)->getParameterID());
    EXPECT_EQ(ids, std::vector<long>({0, 1, 2, 3, 4, 5, 6, 7, 9, 10}))
        << "projects of users hold automation by this order: append, never move";

    EXPECT_EQ(manager.getPropertyByID(13)->getCurrentValue(), 10.0f); // its row says 1, below the minimum
    EXPECT_EQ(manager.getProperty("ATTACKCRUVE")->getParameterID(), 4);
    EXPECT_EQ(manager.getProperty("ATTACKCURVE"), nullptr);
}

TEST(ParameterTables, SingleValuesThatMustNotMove)
{
    EXPECT_EQ(std::bit_cast<unsigned>(DKS_Mini::ps_plain[0].minimum), 0x3B7F9724u);
    EXPECT_EQ(DKS::ps_plain[10].value, 440.0f);
    EXPECT_EQ(DKS::ps_plain[10].defaultValue, 4400.0f);
    std::map<int, float> curves;
    std::vector<int> hidden;
    for (const auto& row : DKS::ps_plain)
    {
        if (row.curve != 0.0f)
            curves[row.parameterId] = row.curve;
        if (!row.automatable)
            hidden.push_back(row.parameterId);
        EXPECT_EQ(row.value == row.defaultValue, row.parameterId != 10) << row.id;
    }
    EXPECT_EQ(curves, (std::map<int, float>{{0, 25}, {10, 8}, {13, 8}, {16, 4}, {17, 4}}));
    EXPECT_EQ(hidden, std::vector<int>({29, 30, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42, 43, 44}));
}

TEST(ParameterTables, ATimeBaseLastsWhatItsNameSays)
{
    for (int i = 0; i < gNumTimeAdjustEntries; ++i)
    {
        const std::string name = gTimeAdjustText[i];
        SCOPED_TRACE(name);
        const bool bar = name.find("Bar") != name.npos;
        double beats = 4.0 / (bar ? 1 : std::stoi(name.substr(2)));
        beats *= name.back() == 'T' ? 2.0 / 3.0 : name.back() == 'D' ? 1.5 : 1.0;
        EXPECT_EQ(gTimeAdjustMultiplier[i], float(beats));
        EXPECT_EQ(std::isdigit(name.back()) || name == "1 Bar", i < gNumSingleTimeAdjustEntries);
    }
}
