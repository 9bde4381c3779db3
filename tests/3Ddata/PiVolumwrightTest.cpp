#include <Quillon/graph/PbIsovaluesList.h>

#include "3Ddata/PiVolumwright.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct AdjustCase {
    const char* name;
    std::vector<float> values;
    float iso;
    float expected;
    bool adjusted;
};

TEST(PiVolumwrightTest, AdjustIsovalMovesAnIsovalueThatNodeValuesEqual) {
    const AdjustCase cases[] = {
        {"untouched when no value equals it", {1, 2, 4}, 3, 3, false},
        {"1 % of the nearest distance towards larger values", {0, 5, 10}, 5, 5.05f, true},
        {"the nearest other value decides", {4.9f, 5, 5, 100}, 5, 5.001f, true},
        {"downwards when no value is larger", {0, 5}, 5, 4.95f, true},
        {"left alone when every value equals it", {5, 5, 5}, 5, 5, false},
        // At 1e7 a float step is 1: 0.1, 0.2 ... 0.5 are lost, 0.6 rounds up.
        {"growing steps until the float moves", {1e7f, 1e7f + 10}, 1e7f, 1e7f + 1, true},
    };
    for (const AdjustCase& c : cases) {
        PiVolumwright adjuster;
        float iso = c.iso;
        adjuster.adjustIsoval(int(c.values.size()), c.values.data(), iso);
        EXPECT_FLOAT_EQ(iso, c.expected) << c.name;
        EXPECT_EQ(adjuster.isIsovalAdjusted(), c.adjusted) << c.name;
    }
}

TEST(PiVolumwrightTest, AdjustIsovalMultipleComparesTheCountWithTheFirstArrayOnly) {
    const std::vector<float> fives = {5, 5}, eight = {8}, five = {5}, fiveEight = {5, 8};
    struct Case {
        const std::vector<float>& first;
        const std::vector<float>& second;
        float expected;
    } cases[] = {
        // Every value of the first array equals it: left alone, whatever the second holds.
        {fives, eight, 5.0f},
        {fiveEight, five, 5.0f},
        // Two equal values, one in each array, and a larger one in the second.
        {five, fiveEight, 5.03f},
    };
    for (const Case& c : cases) {
        PiVolumwright adjuster;
        float iso = 5;
        adjuster.adjustIsovalMultiple(int(c.first.size()), c.first.data(), int(c.second.size()),
                                      c.second.data(), 0, nullptr, iso);
        EXPECT_FLOAT_EQ(iso, c.expected);
    }
}

TEST(PiVolumwrightTest, AdjustIsovalListAdjustsCopiesOfTheListsIsovalues) {
    PbIsovaluesList list;
    const float isovalues[] = {2, 5, 7};
    list.setIrregularIsoList(3, isovalues);
    PiVolumwright adjuster;
    adjuster.setIsovaluesList(&list);

    const std::vector<float> hitting = {0, 5, 10, 7, 7.5f};
    adjuster.adjustIsovalList(int(hitting.size()), hitting.data());
    int count;
    const float* adjusted = adjuster.getAdjustedIsovalues(count);
    ASSERT_EQ(count, 3);
    EXPECT_FLOAT_EQ(adjusted[0], 2.0f);
    EXPECT_FLOAT_EQ(adjusted[1], 5.02f);
    EXPECT_FLOAT_EQ(adjusted[2], 7.005f);
    EXPECT_TRUE(adjuster.isIsovalAdjusted());
    int listCount, regular;
    float min, max, step;
    EXPECT_FLOAT_EQ(list.getIsoList(listCount, min, max, step, regular)[1], 5.0f);

    const std::vector<float> missing = {0, 10};
    adjuster.adjustIsovalList(2, missing.data());
    EXPECT_FLOAT_EQ(adjuster.getAdjustedIsovalues(count)[1], 5.0f);
    EXPECT_FALSE(adjuster.isIsovalAdjusted());
}

} // namespace
