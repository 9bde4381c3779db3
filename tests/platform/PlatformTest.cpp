#include "platform/FsInitModuleCmd.h"
#include "platform/PfToolkit.h"
#include "platform/SbLocaleString.h"
#include "platform/SoDynamicLibManager.h"
#include "platform/SoPreferences.h"

#include <Inventor/SoDB.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/elements/SoTextOutlineEnabledElement.h>
#include <Inventor/misc/SoState.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

TEST(PfToolkit, FinishOnlyCountsSoTheToolkitCanStartAgain) {
    PfToolkit::initDB();
    PfToolkit::initDB();
    EXPECT_EQ(PfToolkit::getDBInitCount(), 2);
    PfToolkit::finishDB();
    PfToolkit::finishDB();
    PfToolkit::finishDB();
    EXPECT_EQ(PfToolkit::getDBInitCount(), 0);
    PfToolkit::initDB();
    EXPECT_TRUE(SoDB::isInitialized());
    PfToolkit::finishDB();
}

TEST(FsInitModuleCmd, RecordsModuleNamesInOrder) {
    FsInitModuleCmd* modules = FsInitModuleCmd::Instance();
    const size_t before = modules->getModuleNames().size();
    modules->serialize("First");
    modules->serialize("Second");
    ASSERT_EQ(modules->getModuleNames().size(), before + 2);
    EXPECT_EQ(modules->getModuleNames()[before], "First");
    EXPECT_TRUE(modules->isRegistered("Second"));
    EXPECT_FALSE(modules->isRegistered("Third"));
}

TEST(SoPreferences, EnvironmentWinsOverDefaults) {
    setenv("QUILLON_TEST_BOOL", "Yes", 1);
    EXPECT_TRUE(SoPreferences::getBool("QUILLON_TEST_BOOL", false));
    setenv("QUILLON_TEST_BOOL", "OFF", 1);
    EXPECT_FALSE(SoPreferences::getBool("QUILLON_TEST_BOOL", true));
    setenv("QUILLON_TEST_BOOL", "maybe", 1);
    EXPECT_TRUE(SoPreferences::getBool("QUILLON_TEST_BOOL", true));
    unsetenv("QUILLON_TEST_BOOL");
    EXPECT_FALSE(SoPreferences::getBool("QUILLON_TEST_BOOL", false));

    setenv("QUILLON_TEST_FLOAT", "30.5", 1);
    EXPECT_FLOAT_EQ(SoPreferences::getFloat("QUILLON_TEST_FLOAT", 1.0f), 30.5f);
    setenv("QUILLON_TEST_FLOAT", "30.5deg", 1);
    EXPECT_FLOAT_EQ(SoPreferences::getFloat("QUILLON_TEST_FLOAT", 1.0f), 1.0f);
    unsetenv("QUILLON_TEST_FLOAT");

    setenv("QUILLON_TEST_STRING", "value", 1);
    EXPECT_STREQ(SoPreferences::getString("QUILLON_TEST_STRING", "x").getString(), "value");
    unsetenv("QUILLON_TEST_STRING");
    EXPECT_STREQ(SoPreferences::getString("QUILLON_TEST_STRING", "x").getString(), "x");
}

TEST(SbLocaleString, PrintsWithAPointWhateverTheLocale) {
    const char* commaLocales[] = {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "fr_FR"};
    const char* found = nullptr;
    for (const char* name : commaLocales)
        if (setlocale(LC_NUMERIC, name)) {
            found = name;
            break;
        }
    EXPECT_STREQ(SbLocaleString::toString_l("%.2f", 1.5).getString(), "1.50");
    EXPECT_STREQ(SbLocaleString::toString_l("%d", 42).getString(), "42");
    float value = 0;
    EXPECT_TRUE(SbLocaleString::parseFloat("2.25", value));
    EXPECT_FLOAT_EQ(value, 2.25f);
    EXPECT_FALSE(SbLocaleString::parseFloat("2,25", value));
    setlocale(LC_NUMERIC, "C");
    if (!found)
        GTEST_SKIP() << "no comma-decimal locale installed; printed in the C locale only";
}

TEST(SoDynamicLibManager, LoadsAndLooksUpByName) {
    EXPECT_STREQ(SoDynamicLibManager::getLibrarySuffix(), ".so");
    EXPECT_FALSE(SoDynamicLibManager::isLibraryLoaded("libquillon-does-not-exist.so"));
    EXPECT_FALSE(SoDynamicLibManager::loadLibrary("libquillon-does-not-exist.so", true));
    ASSERT_TRUE(SoDynamicLibManager::loadLibrary("libm.so.6", true));
    EXPECT_TRUE(SoDynamicLibManager::isLibraryLoaded("libm.so.6"));
    EXPECT_NE(SoDynamicLibManager::lookUpFunction("libm.so.6", "cos", false), nullptr);
    EXPECT_EQ(SoDynamicLibManager::lookUpFunction("libm.so.6", "no_such_symbol", false), nullptr);
}

namespace {
// Gives the test the elements the render action enables.
class RenderActionProbe : public SoGLRenderAction {
public:
    RenderActionProbe() : SoGLRenderAction(SbViewportRegion(10, 10)) {}
    using SoGLRenderAction::getEnabledElements;
};
} // namespace

TEST(SoTextOutlineEnabledElement, IsCarriedByTheRenderAction) {
    PfToolkit::initDB();
    RenderActionProbe action;
    // The element is enabled in the render action, so its state carries it.
    SoState state(&action, action.getEnabledElements().getElements());
    EXPECT_FALSE(SoTextOutlineEnabledElement::get(&state));
    state.push();
    SoTextOutlineEnabledElement::set(&state, nullptr, TRUE);
    EXPECT_TRUE(SoTextOutlineEnabledElement::get(&state));
    state.pop();
    PfToolkit::finishDB();
}
