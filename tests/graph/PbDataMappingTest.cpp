#include <Quillon/graph/PbLinearDataMapping.h>
#include <Quillon/graph/PbNonLinearDataMapping.h>
#include <Quillon/graph/PbNonLinearDataMapping2.h>
#include <Quillon/graph/PiColorConversion.h>

#include "PbDataObjectTestFixture.h"

#include <thread>

namespace {
const SbColor black(0, 0, 0), white(1, 1, 1), grey(0.5f, 0.5f, 0.5f);
const SbColor red(1, 0, 0), green(0, 1, 0), blue(0, 0, 1);

testing::AssertionResult colorIs(const SbColor* actual, const SbColor& expected) {
    if (!actual)
        return testing::AssertionFailure() << "no colour";
    if (!actual->equals(expected, 1e-6f))
        return testing::AssertionFailure()
               << "colour (" << (*actual)[0] << ", " << (*actual)[1] << ", " << (*actual)[2] << ")";
    return testing::AssertionSuccess();
}
} // namespace

using PbDataMappingTest = PbDataObjectTest;

TEST_F(PbDataMappingTest, LinearInterpolatesAndSaturatesPerChannel) {
    PbLinearDataMapping mapping;
    EXPECT_TRUE(colorIs(mapping.getRGBColor(0.5f), grey));
    EXPECT_TRUE(colorIs(mapping.getRGBColor(2), white));
    EXPECT_TRUE(colorIs(mapping.getRGBColor(-1), black));
    mapping.setValues(0, SbColor(0, 0.5f, 1), 0, 1, SbColor(1, 0.5f, 0), 1);
    float transparency = -1;
    EXPECT_TRUE(colorIs(mapping.getRGBColor(1.5f, transparency), SbColor(1, 0.5f, 0)));
    EXPECT_EQ(transparency, 1);
    EXPECT_TRUE(colorIs(mapping.getRGBColor(-0.5f, transparency), SbColor(0, 0.5f, 1)));
    EXPECT_EQ(transparency, 0);
    EXPECT_TRUE(colorIs(mapping.getRGBColor(0.25f, transparency), SbColor(0.25f, 0.5f, 0.75f)));
    EXPECT_FLOAT_EQ(transparency, 0.25f);
}

TEST_F(PbDataMappingTest, ThresholdsCatchValuesAtAndBeyondThem) {
    PbLinearDataMapping mapping;
    mapping.setMinThreshold(0.2f);
    EXPECT_TRUE(colorIs(mapping.getRGBColor(0.2f), SbColor(0.2f, 0.2f, 0.2f))); // disabled
    mapping.enableThresholds(1, 0);
    EXPECT_EQ(mapping.getRGBColor(0.2f), nullptr);
    EXPECT_TRUE(colorIs(mapping.getRGBColor(0.21f), SbColor(0.21f, 0.21f, 0.21f)));
    mapping.setMaxThreshold(0.8f, red, 0.4f);
    mapping.enableThresholds(1, 1);
    float transparency = 0;
    EXPECT_TRUE(colorIs(mapping.getRGBColor(0.8f, transparency), red));
    EXPECT_FLOAT_EQ(transparency, 0.4f);
    EXPECT_TRUE(colorIs(mapping.getRGBColor(0.79f), SbColor(0.79f, 0.79f, 0.79f)));
    // Crossed thresholds: the minimum is tested first.
    mapping.setMinThreshold(0.9f, blue, 0.1f);
    EXPECT_TRUE(colorIs(mapping.getRGBColor(0.85f, transparency), blue));
    EXPECT_FLOAT_EQ(transparency, 0.1f);
    const float hlsGreen[3] = {120, 0.5f, 1};
    mapping.setMaxThreshold(0.8f, hlsGreen, 0);
    float value = 0;
    EXPECT_TRUE(colorIs(mapping.getMaxRGBThreshold(value), green));
    EXPECT_EQ(value, 0.8f);
    EXPECT_FLOAT_EQ(mapping.getMaxHLSThreshold(value)[0], 120);
    mapping.setMinThreshold(0.9f);
    EXPECT_EQ(mapping.getMinRGBThreshold(value), nullptr);
    EXPECT_EQ(mapping.getMinHLSThreshold(value), nullptr);
}

TEST_F(PbDataMappingTest, SettersNotifyAsDocumented) {
    PbLinearDataMapping mapping;
    mapping.addConnection(kit);
    mapping.setMinThreshold(0.2f, red, 0);          // disabled: silent
    mapping.setTransparencyValueDeletedParts(0.5f); // always silent
    EXPECT_TRUE(kit->notifications.empty());
    mapping.enableThresholds(1, 0);
    mapping.setMinThreshold(0.3f);
    mapping.setMaxThreshold(0.7f); // disabled: silent
    mapping.enableTransparency(1);
    mapping.setValues(0, red, 1, blue);
    EXPECT_EQ(changes(), std::vector<PbBase::ChangeType>(4, PbBase::CHANGE));
    EXPECT_EQ(mapping.getTransparencyValueDeletedParts(), 0.5f);
    mapping.removeConnection(kit);
}

TEST_F(PbDataMappingTest, HlsConversionRoundTrips) {
    const struct {
        SbColor rgb;
        float hls[3];
    } cases[] = {{red, {0, 0.5f, 1}},
                 {green, {120, 0.5f, 1}},
                 {blue, {240, 0.5f, 1}},
                 {grey, {0, 0.5f, 0}},
                 {SbColor(0.75f, 0.25f, 0.25f), {0, 0.5f, 0.5f}},
                 {SbColor(1, 1, 0.5f), {60, 0.75f, 1}}};
    for (const auto& c : cases) {
        float hls[3];
        PiColorConversion::rgbToHls(c.rgb, hls);
        EXPECT_TRUE(SbVec3f(hls).equals(SbVec3f(c.hls), 1e-5f))
            << hls[0] << " " << hls[1] << " " << hls[2];
        EXPECT_TRUE(PiColorConversion::hlsToRgb(c.hls).equals(c.rgb, 1e-6f));
    }
    const float wrapped[3] = {480, 0.5f, 1};
    EXPECT_TRUE(PiColorConversion::hlsToRgb(wrapped).equals(green, 1e-6f));
    PbLinearDataMapping mapping;
    mapping.setValues(0, red, 1, blue);
    EXPECT_FLOAT_EQ(mapping.getHLSColor(0)[0], 0);
    EXPECT_FLOAT_EQ(mapping.getHLSColor(1)[0], 240);
}

TEST_F(PbDataMappingTest, PiecewiseMappingsTakeTheLevelOrInterpolate) {
    const auto perLevel = PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL;
    const auto linear = PbNonLinearDataMapping2::LINEAR_PER_LEVEL;
    const float values[] = {1, 2, 4};
    const SbColor levels[] = {red, green, blue}, ramp[] = {black, white, black};
    const float transparencies[] = {0.1f, 0.2f, 0.3f};
    const struct {
        PbNonLinearDataMapping2::Type type;
        int numValues;
        const SbColor* colors;
        float value;
        SbColor color;
        float transparency;
    } cases[] = {{perLevel, 2, levels, 0.5f, red, 0.1f},   {perLevel, 2, levels, 1, green, 0.2f},
                 {perLevel, 2, levels, 1.5f, green, 0.2f}, {perLevel, 2, levels, 2, blue, 0.3f},
                 {perLevel, 2, levels, 7, blue, 0.3f},     {linear, 2, ramp, 0, black, 0},
                 {linear, 2, ramp, 1.5f, grey, 0.15f},     {linear, 2, ramp, 5, white, 0.5f},
                 {linear, 3, ramp, 0.5f, black, 0.05f},    {linear, 3, ramp, 2, white, 0.2f},
                 {linear, 3, ramp, 3, grey, 0.25f}};
    PbNonLinearDataMapping2 mapping;
    for (const auto& c : cases) {
        mapping.setValues(c.type, c.numValues, values, c.colors, transparencies);
        float transparency = -1;
        EXPECT_TRUE(colorIs(mapping.getRGBColor(c.value, transparency), c.color))
            << c.type << " at " << c.value;
        EXPECT_NEAR(transparency, c.transparency, 1e-6f) << c.type << " at " << c.value;
    }
}

TEST_F(PbDataMappingTest, UnsortedValuesKeepTheirColours) {
    PbNonLinearDataMapping2 mapping;
    mapping.addConnection(kit);
    const float values[] = {3, 1, 2};
    const float hls[][3] = {{0, 0.5f, 1}, {120, 0.5f, 1}, {240, 0.5f, 1}, {0, 1, 0}};
    const float transparencies[] = {0.3f, 0.1f, 0.2f, 0.4f};
    mapping.setValues(PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL, 3, values, hls,
                      transparencies);
    int count = 0;
    const float* sorted = mapping.getValuesList(count);
    ASSERT_EQ(count, 3);
    EXPECT_EQ(std::vector<float>(sorted, sorted + 3), (std::vector<float>{1, 2, 3}));
    const SbColor* colors = mapping.getRGBColorsList(count);
    ASSERT_EQ(count, 4);
    const SbColor expected[] = {green, blue, red, white}; // the extra colour stays last
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(colorIs(&colors[i], expected[i])) << i;
    const float* sortedTransparencies = mapping.getTransparencyList(count);
    EXPECT_EQ(std::vector<float>(sortedTransparencies, sortedTransparencies + 4),
              (std::vector<float>{0.1f, 0.2f, 0.3f, 0.4f}));
    EXPECT_FLOAT_EQ(mapping.getHLSColorsList(count)[1][0], 240);
    EXPECT_EQ(changes(), std::vector<PbBase::ChangeType>{PbBase::CHANGE});
    mapping.removeConnection(kit);
}

TEST_F(PbDataMappingTest, BadListsAreRejectedWithoutChange) {
    PbNonLinearDataMapping2 mapping;
    const float values[] = {1, 2};
    const SbColor colors[] = {red, green};
    mapping.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 2, values, colors);
    mapping.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, -1, values, colors);
    mapping.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 2, nullptr, colors);
    mapping.setValues(PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL, 0, values,
                      static_cast<const SbColor*>(nullptr));
    mapping.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 2, values, colors, nullptr);
    EXPECT_EQ(errors->messages().size(), 4u);
    int count = 0;
    mapping.getValuesList(count);
    EXPECT_EQ(count, 2);
    EXPECT_TRUE(colorIs(mapping.getRGBColor(2), green));
}

TEST_F(PbDataMappingTest, FunctionMappingUsesTheLastColourFunction) {
    PbNonLinearDataMapping mapping;
    float transparency = -1;
    EXPECT_TRUE(colorIs(mapping.getRGBColor(0.25f, transparency), SbColor(0.25f, 0.25f, 0.25f)));
    EXPECT_TRUE(colorIs(mapping.getRGBColor(3), white));
    EXPECT_EQ(transparency, 0);
    mapping.setRGBFunction([](float value) { return value > 0 ? red : blue; });
    EXPECT_TRUE(colorIs(mapping.getRGBColor(1), red));
    float factor = 120;
    static const auto times = [](void* data, float value) {
        return value * *static_cast<float*>(data);
    };
    auto hue = [](void* data, float value) { return SbVec3f(times(data, value), 0.5f, 1); };
    mapping.setHLSFunction(hue, &factor); // replaces the RGB function
    EXPECT_TRUE(colorIs(mapping.getRGBColor(1), green));
    mapping.setTransparencyFunction(times, &factor);
    mapping.getRGBColor(0.5f, transparency);
    EXPECT_EQ(transparency, 60);
    mapping.setTransparencyFunction([](float value) { return value / 2; }); // takes precedence
    mapping.getRGBColor(0.5f, transparency);
    EXPECT_EQ(transparency, 0.25f);
    EXPECT_EQ(mapping.getClassType(), PbDataMapping::NON_LINEAR);
}

TEST_F(PbDataMappingTest, EveryMappingHasItsOwnIdAndKind) {
    PbLinearDataMapping first;
    PbNonLinearDataMapping2 second;
    EXPECT_EQ(second.getId(), first.getId() + 1);
    EXPECT_EQ(first.getClassType(), PbDataMapping::LINEAR);
    EXPECT_EQ(second.getClassType(), PbDataMapping::NON_LINEAR2);
}

TEST_F(PbDataMappingTest, ColoursFilledForTheCallerMatchThePointerFormsAndLeaveNoColourAlone) {
    PbLinearDataMapping linear;
    linear.setValues(0, red, 0.2f, 1, blue, 0.6f);
    linear.setMinThreshold(0.1f);              // no colour
    linear.setMaxThreshold(0.9f, green, 0.7f); // a colour
    linear.enableThresholds(1, 1);
    PbNonLinearDataMapping function;
    PbNonLinearDataMapping2 levels;
    const float values[] = {0.3f, 0.6f};
    const SbColor colors[] = {red, green, blue};
    levels.setValues(PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL, 2, values, colors);
    for (const PbDataMapping* mapping :
         {static_cast<const PbDataMapping*>(&linear), static_cast<const PbDataMapping*>(&function),
          static_cast<const PbDataMapping*>(&levels)}) {
        for (float value : {-1.0f, 0.05f, 0.1f, 0.45f, 0.6f, 0.95f, 2.0f}) {
            SCOPED_TRACE(::testing::Message() << mapping->getClassType() << " at " << value);
            float expectedTransparency = -1;
            const SbColor* expected = mapping->getRGBColor(value, expectedTransparency);
            SbColor color = white;
            float transparency = -1;
            EXPECT_EQ(mapping->getRGBColor(value, color, transparency), expected != nullptr);
            EXPECT_TRUE(colorIs(&color, expected ? *expected : white));
            EXPECT_EQ(transparency, expectedTransparency);
        }
    }
    SbColor color = white;
    EXPECT_FALSE(linear.getRGBColor(0.1f, color));
    EXPECT_TRUE(linear.getRGBColor(0.5f, color));
    EXPECT_TRUE(colorIs(&color, SbColor(0.5f, 0, 0.5f)));
}

TEST_F(PbDataMappingTest, ThreadsColourWithOneMappingAtOnce) {
    PbNonLinearDataMapping2 mapping;
    const float values[] = {0, 1};
    const SbColor colors[] = {red, blue};
    mapping.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 2, values, colors);
    // Each thread colours a value of its own, many times over, and checks
    // each colour against the one taken before the threads start.
    const int numThreads = 4, numCalls = 200000;
    std::vector<SbColor> expected(numThreads);
    for (int t = 0; t < numThreads; ++t)
        mapping.getRGBColor((t + 0.5f) / numThreads, expected[t]);
    std::vector<int> mismatches(numThreads, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < numThreads; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < numCalls; ++i) {
                SbColor color;
                mapping.getRGBColor((t + 0.5f) / numThreads, color);
                mismatches[t] += color != expected[t];
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(mismatches, std::vector<int>(numThreads, 0));
}
