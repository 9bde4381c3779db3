#include <Quillon/graph/PbMiscTextAttr.h>

#include "PbDataObjectTestFixture.h"

using PbMiscTextAttrTest = PbDataObjectTest;

TEST_F(PbMiscTextAttrTest, CopiesEverythingButOutlining) {
    PbMiscTextAttr source;
    source.setFontName("Courier");
    source.setLineLength('/', 12);
    source.enableProfile(1);
    source.enablePredefinedProfile(0);
    source.enableOutlining(0);

    PbMiscTextAttr target;
    target.addConnection(kit);
    target = source;
    PbMiscTextAttr copy(source);
    for (const PbMiscTextAttr* attributes : {&target, &copy}) {
        char endLineChar = 0;
        int lineLength = 0;
        attributes->getLineLength(endLineChar, lineLength);
        EXPECT_EQ(endLineChar, '/');
        EXPECT_EQ(lineLength, 12);
        EXPECT_EQ(attributes->getFontName(), SbString("Courier"));
        EXPECT_EQ(attributes->isProfileEnabled(), 1);
        EXPECT_EQ(attributes->isPredefinedProfileEnabled(), 0);
        EXPECT_EQ(attributes->isOutliningEnabled(), 1);
    }
    EXPECT_EQ(changes(), std::vector<PbBase::ChangeType>{PbBase::CHANGE});
    target.removeConnection(kit);
}

TEST_F(PbMiscTextAttrTest, SettersNotifyAndBadInputIsRejected) {
    PbMiscTextAttr attributes;
    EXPECT_EQ(attributes.getFontName(), SbString("defaultFont"));
    attributes.addConnection(kit);
    attributes.setFontName(SbString("Times"));
    attributes.setLineLength(' ', 20);
    attributes.enableProfile(1);
    attributes.enablePredefinedProfile(0);
    attributes.enableOutlining(0);
    EXPECT_EQ(kit->notifications.size(), 5u);
    attributes.setFontName(static_cast<const char*>(nullptr));
    attributes.setLineLength('-', -1);
    EXPECT_EQ(errors->messages().size(), 2u);
    EXPECT_EQ(kit->notifications.size(), 5u);
    char endLineChar = 0;
    int lineLength = 0;
    attributes.getLineLength(endLineChar, lineLength);
    EXPECT_EQ(lineLength, 20);
    EXPECT_EQ(attributes.getFontName(), SbString("Times"));
    attributes.removeConnection(kit);
}
