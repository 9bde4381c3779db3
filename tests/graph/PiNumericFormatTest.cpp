#include <Quillon/graph/PbNumericDisplayFormat.h>
#include <Quillon/graph/PiNumericFormat.h>

#include "PbDataObjectTestFixture.h"

namespace {
std::string text(const PiNumericFormat& format, float value) {
    char buffer[PiNumericFormat::MAX_TEXT_SIZE];
    format.getString(value, buffer);
    return buffer;
}

PiNumericFormat automatic(float min, float max, float step, int rounding = 0) {
    PiNumericFormat format;
    format.setFormatAuto(min, max, step, rounding);
    return format;
}
} // namespace

using PiNumericFormatTest = PbDataObjectTest;

TEST_F(PiNumericFormatTest, AutomaticFormatChoosesPowerAndDecimals) {
    const struct {
        float min, max, step;
        int rounding, tenPower, numDecimal;
    } cases[] = {{0, 0, 0, 0, 0, 0},
                 // Engineering powers from the largest magnitude.
                 {0, 2000, 250, 0, 3, 2},
                 {0, 0.05f, 0.01f, 0, -3, 0},
                 {0, 999, 1, 0, 0, 0},
                 {0, 0.1f, 0.1f, 0, 0, 1},
                 {0, 1e6f, 1e5f, 0, 6, 1},
                 {0, 0.0005f, 0.0001f, 0, -6, 0},
                 // Trailing zeros and a trailing run of nines are dropped; a dropped
                 // zero ends the run.
                 {0, 1, 2.5f, 0, 0, 1},
                 {0, 1, 0.19999f, 0, 0, 1},
                 {0, 1, 0.1990f, 0, 0, 3},
                 {0, 1, 0.1999f, 0, 0, 1},
                 {0, 1, 0.1099f, 0, 0, 1},
                 {0, 1, 0.123f, 0, 0, 3},
                 {0, 1, 0.123f, 1, 0, 2}, // step rounded to 0.12
                 {0, 1, 123456, 0, 0, 0}, // more digits than the budget
                 // The minimum joins the step in the decimals, the maximum does not.
                 {0.5f, 100, 1, 0, 0, 1},
                 {100, 0.5f, 1, 0, 0, 0},
                 {-0.25f, 10, 5, 0, 0, 2}};
    for (const auto& c : cases) {
        const PiNumericFormat format = automatic(c.min, c.max, c.step, c.rounding);
        SCOPED_TRACE(testing::Message() << c.min << " " << c.max << " " << c.step);
        EXPECT_EQ(format.getTenPower(), c.tenPower);
        EXPECT_EQ(format.getNumDecimal(), c.numDecimal);
        EXPECT_EQ(format.isFloatingPointFormat(), c.numDecimal != 0);
    }
}

TEST_F(PiNumericFormatTest, AutomaticFormatPrintsScaledValues) {
    EXPECT_EQ(text(automatic(0, 0, 0), 0), "0");
    EXPECT_STREQ(automatic(0, 2000, 250).getPrintFormat(), "%.2f");
    EXPECT_EQ(text(automatic(0, 2000, 250), 1500), "1.50");
    EXPECT_STREQ(automatic(0, 0.05f, 0.01f).getPrintFormat(), "%d");
    EXPECT_EQ(text(automatic(0, 0.05f, 0.01f), 0.05f), "50");
}

TEST_F(PiNumericFormatTest, IntegersRoundHalfAwayFromZero) {
    PiNumericFormat format;
    format.setFormatInteger(0);
    EXPECT_EQ(text(format, -2.5f), "-3");
    EXPECT_EQ(text(format, 2.5f), "3");
    EXPECT_EQ(text(format, 2.49f), "2");
    EXPECT_EQ(text(format, 1e10f), "10000000000");
    format.setFormatInteger(3);
    EXPECT_EQ(text(format, 2500), "3");
}

TEST_F(PiNumericFormatTest, DisplayFormatObjectsOverrideTheAutomaticChoice) {
    PiNumericFormat format;
    PbNumericDisplayFormat display(PbNumericDisplayFormat::FLOAT_FORMAT, 3, 2);
    format.setFormat(&display, 0, 1, 0.1f, 0);
    EXPECT_STREQ(format.getPrintFormat(), "%.2f");
    EXPECT_EQ(text(format, 1234), "1.23");
    display.setFormat(PbNumericDisplayFormat::INTEGER_FORMAT, -3, 4);
    format.setFormat(&display, 0, 1, 0.1f, 0);
    EXPECT_EQ(text(format, 0.0125f), "13");
    format.setFormat(nullptr, 0, 2000, 250, 0);
    EXPECT_EQ(text(format, 1500), "1.50");
}

TEST_F(PiNumericFormatTest, ValueListsGiveRangeAndMeanStep) {
    PiNumericFormat format;
    const float values[] = {2000, 0, 1000};
    format.setFormat(nullptr, 3, values, 0);
    EXPECT_EQ(format.getTenPower(), 3);
    EXPECT_EQ(format.getNumDecimal(), 0);
    const float single[] = {0.25f};
    format.setFormat(nullptr, 1, single, 0);
    EXPECT_EQ(format.getNumDecimal(), 2);
    format.setFormat(nullptr, 0, values, 0); // empty: unchanged
    EXPECT_EQ(format.getNumDecimal(), 2);
    format.setFormat(nullptr, 2, nullptr, 0);
    format.setFormat(nullptr, -1, values, 0);
    format.setFormatFloatingPoint(-1, 0);
    EXPECT_EQ(errors->messages().size(), 3u);
    EXPECT_EQ(format.getNumDecimal(), 2);
}

TEST_F(PiNumericFormatTest, PrintsWithAPointUnderACommaLocale) {
    if (!useCommaLocale())
        GTEST_SKIP() << "no locale with a decimal comma can be installed";
    char check[16];
    snprintf(check, sizeof(check), "%.1f", 1.5);
    ASSERT_STREQ(check, "1,5");
    const PiNumericFormat format = automatic(0, 2000, 250);
    EXPECT_EQ(format.getNumDecimal(), 2);
    EXPECT_EQ(text(format, 1500), "1.50");
    EXPECT_EQ(automatic(0, 1, 0.1990f).getNumDecimal(), 3);
    std::setlocale(LC_ALL, "C");
}

TEST_F(PbDataObjectTest, NumericDisplayFormatStoresNotifiesAndCopies) {
    PbNumericDisplayFormat format;
    format.addConnection(kit);
    format.setFormat(PbNumericDisplayFormat::FLOAT_FORMAT, -3, 2);
    format.setFormat(PbNumericDisplayFormat::FLOAT_FORMAT, 0, -1);
    format.setFormat(static_cast<PbNumericDisplayFormat::FormatType>(5), 0, 0);
    EXPECT_EQ(errors->messages().size(), 2u);
    PbNumericDisplayFormat copy(format);
    PbNumericDisplayFormat::FormatType type;
    int tenPower = 0, numDecimal = 0;
    copy.getFormat(type, tenPower, numDecimal);
    EXPECT_EQ(type, PbNumericDisplayFormat::FLOAT_FORMAT);
    EXPECT_EQ(tenPower, -3);
    EXPECT_EQ(numDecimal, 2);
    format = PbNumericDisplayFormat();
    EXPECT_EQ(changes(), std::vector<PbBase::ChangeType>(2, PbBase::CHANGE));
    format.removeConnection(kit);
}
