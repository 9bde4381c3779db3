#include <Quillon/graph/PbDateFormatMapping.h>

#include "PbDataObjectTestFixture.h"

#include <cmath>

namespace {
std::string timeText(const PbDateFormatMapping& mapping, double seconds) {
    SbString text;
    mapping.getString(seconds, text);
    return text.getString();
}
} // namespace

using PbDateFormatMappingTest = PbDataObjectTest;

TEST_F(PbDateFormatMappingTest, WritesUtcDatesWithTheDefaultFormat) {
    PbDateFormatMapping mapping;
    EXPECT_EQ(mapping.getFormat(), SbString("%Y-%m-%d %H:%M:%S"));
    EXPECT_EQ(timeText(mapping, 0), "1970-01-01 00:00:00");
    EXPECT_EQ(timeText(mapping, 1700000000.75), "2023-11-14 22:13:20");
    EXPECT_EQ(timeText(mapping, -0.5), "1969-12-31 23:59:59");
    EXPECT_EQ(timeText(mapping, 951782400), "2000-02-29 00:00:00");
}

TEST_F(PbDateFormatMappingTest, FractionsOfSecondsAreRoundedOnce) {
    PbDateFormatMapping mapping("%H:%M:%S.%3f");
    EXPECT_EQ(timeText(mapping, 1700000000.123), "22:13:20.123");
    EXPECT_EQ(timeText(mapping, 59.9996), "00:01:00.000");
    mapping.setFormat("%S.%f|%1f|%%3f");
    EXPECT_EQ(timeText(mapping, 7.25), "07.250000|2|%3f");
}

TEST_F(PbDateFormatMappingTest, NamesStayInTheClassicLocale) {
    if (!useCommaLocale())
        GTEST_SKIP() << "no other locale can be installed";
    PbDateFormatMapping mapping("%A %d %B %Y, %S.%2f");
    EXPECT_EQ(timeText(mapping, 0.5), "Thursday 01 January 1970, 00.50");
    std::setlocale(LC_ALL, "C");
}

TEST_F(PbDateFormatMappingTest, BadFormatsAndTimesArePosted) {
    PbDateFormatMapping mapping;
    mapping.addConnection(kit);
    mapping.setFormat(SbString("%d/%m/%Y"));
    mapping.setFormat("%12f");
    mapping.setFormat(static_cast<const char*>(nullptr));
    EXPECT_EQ(mapping.getFormat(), SbString("%d/%m/%Y"));
    SbString text("previous");
    EXPECT_FALSE(mapping.getString(NAN, text));
    EXPECT_EQ(text, SbString(""));
    EXPECT_FALSE(mapping.getString(1e300, text));
    EXPECT_EQ(errors->messages().size(), 4u);
    EXPECT_EQ(changes(), std::vector<PbBase::ChangeType>{PbBase::CHANGE});
    EXPECT_NE(printed(mapping).find("PbDateFormatMapping:: format = %d/%m/%Y\n"),
              std::string::npos);
    mapping.removeConnection(kit);
}
