#include <Quillon/PoQuillon.h>

#include "graph/PoLibQuillonP.h"
#include "platform/FsFarspanApp.h"
#include "support/ErrorRecorder.h"
#include "support/LibraryTest.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace {
// Loads the stand-in view module by its path, so that the library finds it
// already loaded under its file name.
void* preloadFakeModule() {
    return dlopen(QUILLON_FAKE_VIEW_MODULE_DIR "/QuillonWinD.so", RTLD_NOW | RTLD_GLOBAL);
}
} // namespace

class PoLibQuillonPTest : public LibraryTest {
protected:
    void TearDown() override {
        FsFarspanApp::setRunningQt(false);
        FsFarspanApp::setRunningWx(false);
        LibraryTest::TearDown();
    }
};

TEST_F(PoLibQuillonPTest, FileNameFollowsGuiSystem) {
    EXPECT_STREQ(PoLibQuillonP::getModuleFileName().getString(), "QuillonWinD.so");
    FsFarspanApp::setRunningWx(true);
    EXPECT_STREQ(PoLibQuillonP::getModuleFileName().getString(), "QuillonWxD.so");
    FsFarspanApp::setRunningQt(true);
    EXPECT_STREQ(PoLibQuillonP::getModuleFileName().getString(), "QuillonQtD.so");
}

TEST_F(PoLibQuillonPTest, MissingModuleIsReported) {
    ErrorRecorder errors;
    FsFarspanApp::setRunningQt(true);
    EXPECT_EQ(PoLibQuillonP::instance(), nullptr);
    EXPECT_FALSE(PoLibQuillonP::isAvailable());
    EXPECT_TRUE(errors.contains("Could not load QuillonQtD.so")) << errors.messages().size();
}

TEST_F(PoLibQuillonPTest, SingletonIsReleasedAfterAllButTheFirstReference) {
    ASSERT_NE(preloadFakeModule(), nullptr) << dlerror();
    PoLibQuillonP* first = PoLibQuillonP::instance();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(PoLibQuillonP::instance(), first);
    EXPECT_TRUE(PoLibQuillonP::isAvailable());
    PoLibQuillonP::finish();
    EXPECT_FALSE(PoLibQuillonP::isAvailable());
    PoLibQuillonP::finish();
    EXPECT_FALSE(PoLibQuillonP::isAvailable());
}

TEST_F(PoLibQuillonPTest, LastFinishCallsTheModuleFinaliser) {
    void* module = preloadFakeModule();
    ASSERT_NE(module, nullptr) << dlerror();
    const int* exitCount = static_cast<int*>(dlsym(module, "fakeViewModuleExitCount"));
    ASSERT_NE(exitCount, nullptr);
    PoLibQuillonP::instance();
    PoLibQuillonP::instance();
    EXPECT_EQ(*exitCount, 0);
    PoQuillon::finish();
    EXPECT_EQ(*exitCount, 1);
    EXPECT_FALSE(PoLibQuillonP::isAvailable());
    PoQuillon::init(); // balanced by TearDown
}
