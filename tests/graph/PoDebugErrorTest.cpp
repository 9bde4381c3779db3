#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PoDebugError.h>

#include "support/ErrorRecorder.h"
#include "support/LibraryTest.h"

#include <gtest/gtest.h>

#include <string>

class PoDebugErrorTest : public LibraryTest {};

TEST_F(PoDebugErrorTest, TextsAndSeveritiesReachTheHandler) {
    ErrorRecorder errors;
    PoDebugError::post("A::b", "M %d", 1);
    PoDebugError::postWarning("C::d", "%s", "W");
    PoDebugError::postInfo("E::f", "I");
    ASSERT_EQ(errors.messages().size(), 3u);
    EXPECT_EQ(errors.messages()[0], "Quillon error in A::b(): M 1");
    EXPECT_EQ(errors.messages()[1], "Quillon warning in C::d(): W");
    EXPECT_EQ(errors.messages()[2], "Quillon: in E::f(): I");
    EXPECT_EQ(errors.severities()[0], PoDebugError::ERROR);
    EXPECT_EQ(errors.severities()[1], PoDebugError::WARNING);
    EXPECT_EQ(errors.severities()[2], PoDebugError::INFO);
}

TEST_F(PoDebugErrorTest, HandlerIsResetByInitClass) {
    ErrorRecorder errors;
    int data = 0;
    PoDebugError::setHandlerCallback(nullptr, &data);
    EXPECT_EQ(PoDebugError::getHandlerData(), &data);
    PoDebugError::initClass();
    EXPECT_EQ(PoDebugError::getHandlerData(), nullptr);
    EXPECT_NE(PoDebugError::getHandlerCallback(), nullptr);
    EXPECT_EQ(PoDebugError::getClassTypeId().getName(), SbName("DebugError"));
    EXPECT_TRUE(PoDebugError::getClassTypeId().isDerivedFrom(SoError::getClassTypeId()));
}

TEST_F(PoDebugErrorTest, LongMessagesAreCutNotOverrun) {
    ErrorRecorder errors;
    const std::string longText(20000, 'x');
    PoDebugError::post("A::b", "%s", longText.c_str());
    ASSERT_EQ(errors.messages().size(), 1u);
    EXPECT_LT(errors.messages()[0].size(), 10100u);
}
