#include "ToolTestFiles.h"

#include "render/SceneFraming.h"
#include "render/SceneLoader.h"
#include "support/LibraryTest.h"
#include "support/SceneIO.h"

#include <Quillon/PoQuillon.h>

#include <Inventor/errors/SoReadError.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoCube.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

class SceneLoading : public LibraryTest {
protected:
    // Loads the file and expects a failure whose message holds every
    // fragment given.
    void expectFailure(const std::string& path, std::initializer_list<std::string> fragments) {
        std::string error;
        EXPECT_FALSE(loadSceneFile(path, error));
        EXPECT_EQ(error.find('\n'), std::string::npos) << "not one line: " << error;
        for (const std::string& fragment : fragments)
            EXPECT_NE(error.find(fragment), std::string::npos)
                << "'" << fragment << "' missing from: " << error;
    }

    ScratchDir m_dir;
};

} // namespace

TEST_F(SceneLoading, ReadsAValidSceneFile) {
    std::string error;
    NodeRef<SoSeparator> scene = loadSceneFile(m_dir.write("cube.iv", redCubeScene), error);
    ASSERT_TRUE(scene) << error;
    EXPECT_TRUE(sceneHasNodeOfType(scene.get(), SoCube::getClassTypeId()));
    EXPECT_EQ(scene->getRefCount(), 1);
}

TEST_F(SceneLoading, NamesMissingAndUnopenableFiles) {
    const std::string missing = m_dir.file("missing.iv");
    expectFailure(missing, {"cannot open " + missing, "No such file or directory"});
    expectFailure(m_dir.file(""), {"directory"});
}

TEST_F(SceneLoading, SyntaxErrorsCarryTheReaderMessageAndLine) {
    const std::string badField = m_dir.write("field.iv", "#Inventor V2.1 ascii\n"
                                                         "Separator {\n"
                                                         "  Cube { width 2 }\n"
                                                         "  Sphere { radius x }\n"
                                                         "}\n");
    expectFailure(badField, {badField + ", line 4: ", "radius"});

    const std::string unknownNode =
        m_dir.write("node.iv", "#Inventor V2.1 ascii\nSeparator {\n  NoSuchNode { }\n}\n");
    expectFailure(unknownNode, {"line 3", "NoSuchNode"});

    const std::string unclosed = m_dir.write("open.iv", "#Inventor V2.1 ascii\nSeparator {\n");
    expectFailure(unclosed, {unclosed + ", line "});

    const std::string notAScene = m_dir.write("text.iv", "hello world\n");
    expectFailure(notAScene, {"line 1", "Not a valid Inventor file"});
}

TEST_F(SceneLoading, SceneTextErrorsUseTheGivenName) {
    std::string error;
    EXPECT_FALSE(loadSceneText("#Inventor V2.1 ascii\nCube { depth }\n", "inline", error));
    EXPECT_EQ(error.rfind("inline, line 2: ", 0), 0u) << error;
}

TEST_F(SceneLoading, RestoresTheReadErrorHandler) {
    SoErrorCB* const handler = SoReadError::getHandlerCallback();
    void* const data = SoReadError::getHandlerData();
    std::string error;
    loadSceneText("not a scene", "x", error);
    EXPECT_EQ(SoReadError::getHandlerCallback(), handler);
    EXPECT_EQ(SoReadError::getHandlerData(), data);
}

namespace {
std::string nested(int levels) {
    std::string text = "#Inventor V2.1 ascii\n";
    for (int i = 0; i < levels; ++i)
        text += "Separator {\n";
    text += "Cube { }\n";
    for (int i = 0; i < levels; ++i)
        text += "}\n";
    return text;
}
} // namespace

// Each of these killed the process that read it: the toolkit's reader
// crashed or overflowed its stack, or the framing walked round a cycle.
TEST_F(SceneLoading, RefusesScenesTheToolkitCannotReadOrWalkSafely) {
    const std::string header = "#Inventor V2.1 ascii\nSeparator {\n";
    const struct {
        const char* name;
        std::string text;
        std::vector<std::string> fragments;
    } cases[] = {
        {"twice.iv",
         header + "  Cube { fields [ SFFloat foo ] }\n  Cube { fields [ SFFloat foo ] foo 1 }\n}\n",
         {"twice.iv, line 3: ",
          "a Cube node declares a field \"foo\" that its class does not have"}},
        {"domain.iv",
         header + "  PoDomain { fields [ SFFloat foo ] foo 1 }\n"
                  "  PoDomain { fields [ SFFloat foo ] foo 2 }\n}\n",
         {"domain.iv, line 3: ", "a PoDomain node declares a field \"foo\""}},
        {"cycle.iv",
         "#Inventor V2.1 ascii\nDEF A Separator { Cube { } USE A }\n",
         {"cycle.iv: A, a Separator, contains itself"}},
        {"deep.iv", nested(30000), {"deep.iv: ", "nested more than 6000 levels deep"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::string error;
        EXPECT_FALSE(loadSceneFile(m_dir.write(c.name, c.text), error));
        EXPECT_EQ(error.find('\n'), std::string::npos) << error;
        for (const std::string& fragment : c.fragments)
            EXPECT_NE(error.find(fragment), std::string::npos) << error;
    }
    // The fields of the classes are untouched: a node of each writes as before.
    auto* cube = new SoCube;
    cube->ref();
    EXPECT_EQ(SceneIO::write(cube).find("foo"), std::string::npos);
    cube->unref();
}

TEST_F(SceneLoading, ReadsDeepScenesUpToTheLimitAndDeclaredFieldsTheClassHas) {
    std::string error;
    EXPECT_TRUE(loadSceneText(nested(5000), "deep", error)) << error;
    NodeRef<SoSeparator> declared = loadSceneText(
        "#Inventor V2.1 ascii\nCube { fields [ SFFloat width ] width 3 }\n", "declared", error);
    ASSERT_TRUE(declared) << error;
    EXPECT_EQ(static_cast<SoCube*>(declared->getChild(0))->width.getValue(), 3.0f);
}

TEST_F(SceneLoading, ProblemsTheReaderWorkedAroundComeBackAsWarnings) {
    std::vector<std::string> warnings;
    std::string error;
    const std::string missing = m_dir.write(
        "file.iv", "#Inventor V2.1 ascii\nSeparator {\n  File { name \"none.iv\" }\n}\n");
    EXPECT_TRUE(loadSceneFile(missing, error, &warnings)) << error;
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_EQ(warnings[0].rfind(missing + ", line 3: Could not find 'none.iv'", 0), 0u)
        << warnings[0];

    // A binary file holding a number that is not one: the reader puts 0.
    auto* coordinates = new SoCoordinate3;
    coordinates->ref();
    coordinates->point.setValue(SbVec3f(std::nanf(""), 1, 2));
    const std::string binary = SceneIO::write(coordinates, true);
    coordinates->unref();
    warnings.clear();
    EXPECT_TRUE(loadSceneText(binary, "binary", error, &warnings)) << error;
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_EQ(warnings[0].rfind("binary, position ", 0), 0u) << warnings[0];
    EXPECT_NE(warnings[0].find("non-valid floating point number"), std::string::npos);
}
