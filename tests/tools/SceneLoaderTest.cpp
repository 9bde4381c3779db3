#include "ToolTestFiles.h"

#include "render/SceneFraming.h"
#include "render/SceneLoader.h"
#include "support/LibraryTest.h"

#include <Quillon/PoQuillon.h>

#include <Inventor/errors/SoReadError.h>
#include <Inventor/nodes/SoCube.h>

#include <gtest/gtest.h>

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
