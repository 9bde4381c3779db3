#include <Quillon/graph/PoLinearAxis.h>

#include "support/ErrorRecorder.h"
#include "support/LibraryTest.h"

#include <cmath>

namespace {

TEST(PoLinearAxisRules, TheStepFollowsTheMantissaThresholds) {
    const struct {
        float range, given, step;
    } cases[] = {
        // A range of 0 keeps the caller's step.
        {0, 0, 0},
        {0, 5, 5},
        // The documented examples.
        {1, 0, 0.2f},
        {10, 0, 1},
        {11, 0, 2},
        {20, 0, 3},
        {40, 0, 5},
        {50, 0, 10},
        {5000, 0, 1000},
        // Every mantissa and threshold.
        {28, 0, 3},
        {30, 0, 4},
        {38, 0, 4},
        {39.5f, 0, 5},
        {48, 0, 5},
        {49.5f, 0, 10},
        {100, 0, 20},
        {18, 0, 2},
        {19.5f, 0, 3},
        // Negative and decreasing ranges take the range's sign.
        {-20, 0, -3},
        {-0.5f, 0, -0.1f},
        // Tiny and huge magnitudes.
        {2e-6f, 0, 3e-7f},
        {3e8f, 0, 4e7f},
        {7.5e-3f, 0, 1e-3f},
        // A given step is kept, with the range's sign.
        {10, 2.5f, 2.5f},
        {10, -2.5f, 2.5f},
        {-10, 2.5f, -2.5f},
    };
    for (const auto& c : cases) {
        float step = c.given;
        PoLinearAxis::getLinGradStep(c.range, step);
        EXPECT_NEAR(step, c.step, 1e-5f * std::fabs(c.step)) << "range " << c.range;
    }
}

TEST(PoLinearAxisRules, FirstGraduationAndCountForBothFits) {
    const auto FIT = PoLinearAxis::GRAD_FIT;
    const auto UNFIT = PoLinearAxis::GRAD_UNFIT;
    const struct {
        PoLinearAxis::GradFit fit;
        float min, max, step, first;
        int count;
    } cases[] = {
        {UNFIT, 0, 1, 0.2f, 0, 6},
        {UNFIT, 0.05f, 0.97f, 0.2f, 0.2f, 4},
        {UNFIT, -7, 13, 5, -5, 4},
        {UNFIT, -0.3f, -0.1f, 0.1f, -0.3f, 3},
        {UNFIT, 0.5f, 4.5f, 1, 1, 4},
        {UNFIT, 0.21f, 0.39f, 0.2f, 0.4f, 0},
        // Decreasing ranges count downward from the largest multiple.
        {UNFIT, 13, -7, -5, 10, 4},
        {UNFIT, 1, 0, -0.25f, 1, 5},
        {FIT, 0.05f, 0.97f, 0.2f, 0.05f, 5},
        {FIT, 1, 0, -0.25f, 1, 5},
        {FIT, -3, 3, 3, -3, 3},
        // Nothing to count.
        {UNFIT, 0, 1, 0, 0, 0},
        {FIT, NAN, 1, 0.2f, NAN, 0},
    };
    for (const auto& c : cases) {
        float first = -99;
        int count = -1;
        PoLinearAxis::getLinGradFirstGrad(c.fit, c.min, c.max, c.step, first, count);
        EXPECT_EQ(count, c.count) << c.min << " to " << c.max << " by " << c.step;
        if (!std::isnan(c.first)) {
            EXPECT_NEAR(first, c.first, 1e-6f) << c.min << " to " << c.max << " by " << c.step;
        }
    }
}

TEST(PoLinearAxisRules, GetLinGradsChoosesTheStepThenCounts) {
    float first, step = 0;
    int count;
    PoLinearAxis::getLinGrads(PoLinearAxis::GRAD_UNFIT, -1.2f, 8.7f, first, step, count);
    EXPECT_FLOAT_EQ(step, 1.0f);
    EXPECT_FLOAT_EQ(first, -1.0f);
    EXPECT_EQ(count, 10);
}

class PoLinearAxisRulesLimits : public LibraryTest {};

TEST_F(PoLinearAxisRulesLimits, MillionsOfGraduationsAreCappedWithAMessage) {
    ErrorRecorder errors;
    float first;
    int count;
    PoLinearAxis::getLinGradFirstGrad(PoLinearAxis::GRAD_UNFIT, 0, 1e7f, 1, first, count);
    EXPECT_EQ(count, 5000);
    EXPECT_TRUE(errors.contains("makes 10000001 graduations; only the first 5000 are drawn"));
    PoLinearAxis::getLinGradFirstGrad(PoLinearAxis::GRAD_FIT, 0, 1, 1e-30f, first, count);
    EXPECT_EQ(count, 5000);
    EXPECT_EQ(errors.messages().size(), 2u);
}

} // namespace
