// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/ParameterProperty.h"

#include <gtest/gtest.h>
#include <limits>
#include <utility>
#include <vector>

using Orbel::ParameterProperty;

namespace
{
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

// Keeps the value that it was told of.
struct Hearer : Orbel::ParameterChangeListener
{
    void parameterChanged(ParameterProperty* property) override
    {
        heard.push_back(property->getCurrentValue());
    }

    std::vector<float> take() { return std::exchange(heard, {}); }

    std::vector<float> heard;
};

using Values = std::vector<float>;

Orbel::ParameterPropertySetup row(float minimum, float maximum, float value, float curve = 0.0f)
{
    Orbel::ParameterPropertySetup setup;
    setup.minimum = minimum;
    setup.maximum = maximum;
    setup.value = setup.defaultValue = value;
    setup.curve = curve;
    return setup;
}
}

TEST(ParameterProperty, ClampsToItsRangeAlsoWhenThatIsReversed)
{
    struct Case
    {
        float minimum, maximum, written, kept;
    };
    for (const Case& c : {Case{0, 10, 11, 10}, Case{0, 10, -1, 0}, Case{0, 10, 4, 4}, Case{10, 0, 11, 10},
                          Case{10, 0, -1, 0}, Case{10, 0, 4, 4}, Case{0, 10, infinity, 10},
                          Case{10, 0, infinity, 10}, Case{0, 10, -infinity, 0}, Case{5, 5, 7, 5}})
    {
        SCOPED_TRACE(testing::Message() << c.written << " in " << c.minimum << " to " << c.maximum);
        const auto setup = row(c.minimum, c.maximum, c.minimum);
        ParameterProperty p;
        p.setup(&setup);
        p.setValue(c.written);
        EXPECT_EQ(p.getCurrentValue(), c.kept);
        p.setDefaultValue(c.written);
        EXPECT_EQ(p.getDefaultValue(), c.kept);
    }
}

TEST(ParameterProperty, TheCurveBendsTheTravel)
{
    struct Case
    {
        float curve, position, value;
    };
    // By hand, over 100 to 200: (1 + a) x / (1 + a x) with a = -c, or 1 - (1 + c) t / (c t + 1), t = 1 - x.
    for (const Case& c : {Case{0, 0.25f, 125}, Case{0.5f, 0.5f, 140}, Case{-0.5f, 0.5f, 160},
                          Case{3, 0.5f, 120}, Case{-3, 0.5f, 180}, Case{25, 0, 100}, Case{25, 1, 200}})
    {
        SCOPED_TRACE(testing::Message() << "curve " << c.curve << " at " << c.position);
        const auto setup = row(100, 200, 100, c.curve);
        ParameterProperty p;
        p.setup(&setup);
        EXPECT_FLOAT_EQ(float(p.denormalize(c.position)), c.value);
        p.setNormalized(c.position);
        EXPECT_FLOAT_EQ(p.getCurrentValue(), c.value);
        for (int i = 0; i <= 64; ++i)
            EXPECT_NEAR(p.normalize(p.denormalize(i / 64.0)), i / 64.0, 4e-6);
    }
}

TEST(ParameterProperty, WritesClampThePositionAndTheMapsDoNot)
{
    const auto setup = row(0, 10, 0);
    ParameterProperty p;
    p.setup(&setup);
    p.setValue_Normalized(1.5f);
    EXPECT_EQ(p.getCurrentValue(), 10.0f);
    EXPECT_FLOAT_EQ(float(p.denormalize(1.5)), 15.0f);
    EXPECT_FLOAT_EQ(float(p.normalize(-5.0)), -0.5f);
    p.setCurve(infinity); // now the map gives no number
    p.setValue_Normalized(0.5f);
    EXPECT_EQ(p.getCurrentValue(), 10.0f);
}

TEST(ParameterProperty, EveryWriteIsToldAndTheWriterIsNot)
{
    ParameterProperty p;
    Hearer first, second;
    p.AddListener(&first, true);
    p.AddListener(&first, true); // in the list once, called twice
    EXPECT_EQ(first.take(), Values({0, 0}));
    p.AddListener(&second, false);
    p.AddListener(nullptr, true);

    p.setValue(0.5f);
    p.setValue(0.5f);
    p.setValue(&first, 0.25f);
    p.setValue_Normalized(&first, 0.75f);
    p.setValueToDefault();
    p.setMax(2.0f); // moves no value
    EXPECT_EQ(first.take(), Values({0.5f, 0.5f, 0}));
    EXPECT_EQ(second.take(), Values({0.5f, 0.5f, 0.25f, 0.75f, 0}));
    p.setMin(0.25f);
    EXPECT_EQ(first.take(), Values({0.25f}));
    p.setCurve(0.5f); // the value stays, its position moves
    EXPECT_EQ(first.take(), Values({0.25f}));

    const auto setup = row(0, 8, 6);
    ParameterProperty other;
    other.setup(&setup);
    other.setDefaultValue(3);
    p = other;
    EXPECT_EQ(first.take(), Values({6}));
    EXPECT_EQ(Values({p.getDefaultValue(), p.getMax(), p.getCurve()}), Values({3, 8, 0}));
}

TEST(ParameterProperty, ReplacesOnlyTheValueThatTheWriterHasRead)
{
    const auto setup = row(0, 10, 4);
    ParameterProperty p;
    p.setup(&setup);
    Hearer writer, other;
    p.AddListener(&writer, false);
    p.AddListener(&other, false);
    EXPECT_FALSE(p.replaceValue(3, 5, nullptr)) << "somebody else wrote 4 meanwhile";
    EXPECT_TRUE(p.replaceValue(4, 11, &writer)) << "clamped to 10";
    EXPECT_FALSE(p.replaceValue(10, notANumber, nullptr));
    p.notifyListeners(&other);
    EXPECT_EQ(writer.take(), Values({10}));
    EXPECT_EQ(other.take(), Values({10}));
}

TEST(ParameterProperty, NothingTakesANaN)
{
    const auto setup = row(-1, 1, 0.5f, 0.25f);
    ParameterProperty p;
    Hearer hearer;
    p.setup(&setup);
    p.AddListener(&hearer, false);
    p.setValue(notANumber);
    p.setValue(nullptr, notANumber);
    p.setValue_Normalized(notANumber);
    p.setValue_Normalized(nullptr, notANumber);
    p.setNormalized(notANumber);
    p.setValue("nan");
    p.setValue(static_cast<const char*>(nullptr));
    p.setDefaultValue(notANumber);
    p.setMin(notANumber);
    p.setMax(notANumber);
    p.setCurve(notANumber);
    EXPECT_EQ(hearer.take(), Values());
    EXPECT_EQ(Values({p.getMin(), p.getMax(), p.getCurrentValue(), p.getDefaultValue(), p.getCurve()}),
              Values({-1, 1, 0.5f, 0.5f, 0.25f}));
}
