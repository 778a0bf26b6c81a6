// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/CPropertyManager.h"
#include "effect/parameters/DKS.h"
#include "effect/parameters/DKS_Mini.h"
#include "effect/parameters/TimeAdjust.h"

#include <cctype>
#include <gtest/gtest.h>
#include <map>
#include <span>
#include <string>

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
