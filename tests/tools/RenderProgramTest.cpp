#include "ToolTestFiles.h"

#include "support/HeadlessRender.h"
#include "support/LibraryTest.h"

#include "render/CommandLine.h"
#include "render/SceneRendering.h"

#include <Quillon/PoQuillon.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <sys/wait.h>
#include <vector>

namespace {

struct RunResult {
    int exitCode = -1;
    std::string stdoutText;
    std::string stderrText;
};

std::string contentsOf(const std::string& path) {
    std::ifstream file(path);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

// Runs quillon-render with the arguments, each quoted for the shell, after
// the environment settings given.
RunResult runProgram(const std::vector<std::string>& arguments, const ScratchDir& dir,
                     const std::string& environment = "") {
    std::string command = environment + " '" + QUILLON_RENDER_PROGRAM + "'";
    for (const std::string& argument : arguments)
        command += " '" + argument + "'";
    command += " >'" + dir.file("stdout.txt") + "' 2>'" + dir.file("stderr.txt") + "'";
    RunResult result;
    const int status = std::system(command.c_str());
    if (WIFEXITED(status))
        result.exitCode = WEXITSTATUS(status);
    result.stdoutText = contentsOf(dir.file("stdout.txt"));
    result.stderrText = contentsOf(dir.file("stderr.txt"));
    return result;
}

bool parses(std::vector<const char*> arguments, RenderRequest& request, std::string& error) {
    arguments.insert(arguments.begin(), "quillon-render");
    return parseCommandLine(static_cast<int>(arguments.size()), arguments.data(), request, error);
}

} // namespace

TEST(RenderCommandLine, ReadsSceneOutputSizeAndBackground) {
    RenderRequest request;
    std::string error;
    ASSERT_TRUE(parses({"scene.iv", "-o", "out.png"}, request, error)) << error;
    EXPECT_EQ(request.scenePath, "scene.iv");
    EXPECT_EQ(request.outputPath, "out.png");
    EXPECT_EQ(request.settings.width, 800);
    EXPECT_EQ(request.settings.height, 600);
    EXPECT_EQ(request.settings.background, SbColor(0, 0, 0));

    EXPECT_FALSE(request.strict);

    ASSERT_TRUE(
        parses({"--background", "0.25,1,0", "-o", "b.PNG", "--size", "320x200", "a.iv", "--strict"},
               request, error))
        << error;
    EXPECT_EQ(request.scenePath, "a.iv");
    EXPECT_EQ(request.outputPath, "b.PNG");
    EXPECT_EQ(request.settings.width, 320);
    EXPECT_EQ(request.settings.height, 200);
    EXPECT_EQ(request.settings.background, SbColor(0.25f, 1, 0));
    EXPECT_TRUE(request.strict);
    EXPECT_EQ(request.action, RenderRequest::RENDER);
}

TEST(RenderCommandLine, BackgroundChannelsTakeAnyFloatNotation) {
    for (const char* notation : {"0.5", ".5", "+.5", "5e-1", "5E-1", "0.50", "0x1p-1", "0X.8P0"}) {
        const std::string background = std::string(notation) + ",1.,0e0";
        RenderRequest request;
        std::string error;
        ASSERT_TRUE(
            parses({"a.iv", "-o", "b.png", "--background", background.c_str()}, request, error))
            << notation << ": " << error;
        EXPECT_EQ(request.settings.background, SbColor(0.5f, 1, 0)) << notation;
    }
}

TEST(RenderCommandLine, HelpAndVersionNeedNothingElse) {
    for (auto [argument, action] : {std::pair{"-h", RenderRequest::SHOW_HELP},
                                    {"--help", RenderRequest::SHOW_HELP},
                                    {"--version", RenderRequest::SHOW_VERSION}}) {
        RenderRequest request;
        std::string error;
        ASSERT_TRUE(parses({argument}, request, error)) << argument << ": " << error;
        EXPECT_EQ(request.action, action) << argument;
        ASSERT_TRUE(parses({"a.iv", argument, "--frobnicate"}, request, error)) << argument;
        EXPECT_EQ(request.action, action) << argument;
    }
}

TEST(RenderCommandLine, RejectsWrongArgumentsAndKeepsTheRequest) {
    const std::vector<std::vector<const char*>> wrong = {
        {},
        {"a.iv"},
        {"-o", "b.png"},
        {"a.iv", "-o"},
        {"a.iv", "-o", "b.png", "c.iv"},
        {"a.iv", "-o", "b.png", "--frobnicate"},
        {"a.iv", "-o", "b.png", "--size", "0x10"},
        {"a.iv", "-o", "b.png", "--size", "640"},
        {"a.iv", "-o", "b.png", "--size", "64x48x2"},
        {"a.iv", "-o", "b.png", "--size", "100000x10"},
        {"a.iv", "-o", "b.png", "--size"},
        {"a.iv", "-o", "b.png", "--background", "1,2,0"},
        {"a.iv", "-o", "b.png", "--background", "0.5,0.5"},
        {"a.iv", "-o", "b.png", "--background", "0.5,0.5,0.5,"},
        {"a.iv", "-o", "b.png", "--background", "red,green,blue"},
        {"a.iv", "-o", "b.png", "--background", "-0.1,0,0"},
        {"a.iv", "-o", "b.png", "--background", "nan,0,0"},
        {"a.iv", "-o", "b.png", "--background", "+-0,0,0"},
        {"a.iv", "-o", "b.png", "-o", "c.png"},
        {"a.iv", "-o", "b.png", "--size", "10x10", "--size", "20x20"},
        {"a.iv", "-o", "b.jpg"},
        {"a.iv", "-o", "png"},
        {"a.iv", "-o", ".png"},
    };
    for (const auto& arguments : wrong) {
        RenderRequest request;
        request.scenePath = "kept.iv";
        std::string error;
        EXPECT_FALSE(parses(arguments, request, error)) << arguments.size() << " arguments";
        EXPECT_FALSE(error.empty());
        EXPECT_EQ(request.scenePath, "kept.iv");
    }
}

class RenderProgram : public LibraryTest {
protected:
    ScratchDir m_dir;
};

TEST_F(RenderProgram, RendersASceneFileIntoAPng) {
    QUILLON_REQUIRE_RENDERING();
    RenderRequest request;
    request.scenePath = m_dir.write("cube.iv", redCubeScene);
    request.outputPath = m_dir.file("cube.png");
    request.settings.width = 64;
    request.settings.height = 48;
    request.settings.background = SbColor(0, 0, 1);
    std::string error;
    std::vector<std::string> warnings;
    ASSERT_TRUE(renderSceneFileToPng(request, error, warnings)) << error;
    EXPECT_TRUE(warnings.empty());

    const RenderImage image = readPngFile(request.outputPath);
    ASSERT_EQ(image.width(), 64);
    ASSERT_EQ(image.height(), 48);
    EXPECT_EQ(image.channels(), 3);
    EXPECT_TRUE(pixelNear(image, 32, 24, Rgb{255, 0, 0}));
    EXPECT_TRUE(pixelNear(image, 0, 0, Rgb{0, 0, 255}, 0));
    EXPECT_TRUE(pixelNear(image, 63, 47, Rgb{0, 0, 255}, 0));
}

TEST_F(RenderProgram, ProgramRendersAnExampleQuietly) {
    QUILLON_REQUIRE_RENDERING();
    const std::string output = m_dir.file("shapes.png");
    const RunResult run = runProgram({std::string(QUILLON_EXAMPLES_DIR) + "/toolkit-shapes.iv",
                                      "-o", output, "--size", "120x90", "--background", "1,1,1"},
                                     m_dir);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.stderrText, "");
    const RenderImage image = readPngFile(output);
    ASSERT_EQ(image.width(), 120);
    ASSERT_EQ(image.height(), 90);
    EXPECT_TRUE(pixelNear(image, 0, 0, Rgb{255, 255, 255}, 0));
    EXPECT_FALSE(isAllBackground(image, Rgb{255, 255, 255}));
}

TEST_F(RenderProgram, ProgramExitCodes) {
    const RunResult noOutput = runProgram({"scene.iv"}, m_dir);
    EXPECT_EQ(noOutput.exitCode, 2);
    EXPECT_NE(noOutput.stderrText.find("usage: quillon-render SCENE.iv -o OUT.png"),
              std::string::npos)
        << noOutput.stderrText;

    const RunResult badSize =
        runProgram({"scene.iv", "-o", m_dir.file("x.png"), "--size", "big"}, m_dir);
    EXPECT_EQ(badSize.exitCode, 2);

    const std::string broken =
        m_dir.write("broken.iv", "#Inventor V2.1 ascii\nSeparator {\n  Cube { width }\n}\n");
    const RunResult syntax = runProgram({broken, "-o", m_dir.file("broken.png")}, m_dir);
    EXPECT_EQ(syntax.exitCode, 1);
    EXPECT_EQ(syntax.stderrText.rfind("quillon-render: " + broken + ", line 3: ", 0), 0u)
        << syntax.stderrText;
    EXPECT_EQ(syntax.stderrText.find('\n'), syntax.stderrText.size() - 1) << syntax.stderrText;

    const RunResult missing = runProgram({m_dir.file("none.iv"), "-o", m_dir.file("n.png")}, m_dir);
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(missing.stderrText, "quillon-render: cannot open " + m_dir.file("none.iv") +
                                      ": No such file or directory\n");

    const RunResult help = runProgram({"--help"}, m_dir);
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_EQ(help.stdoutText.rfind(renderUsage, 0), 0u) << help.stdoutText;
    EXPECT_NE(help.stdoutText.find("--strict"), std::string::npos);

    const RunResult version = runProgram({"--version"}, m_dir);
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_EQ(version.stdoutText, std::string("quillon-render ") + PoQuillon::getVersion() + "\n");
}

TEST_F(RenderProgram, WarningsAreReportedAndStrictMakesThemFail) {
    QUILLON_REQUIRE_RENDERING();
    const std::string scene =
        m_dir.write("file.iv", "#Inventor V2.1 ascii\nSeparator {\n  File { name \"none.iv\" }\n"
                               "  LightModel { model BASE_COLOR }\n  Cube { }\n}\n");
    const std::string picture = m_dir.file("file.png");
    const RunResult lenient = runProgram({scene, "-o", picture, "--size", "40x30"}, m_dir);
    EXPECT_EQ(lenient.exitCode, 0);
    EXPECT_EQ(lenient.stderrText.rfind(
                  "quillon-render: warning: " + scene + ", line 3: Could not find 'none.iv'", 0),
              0u)
        << lenient.stderrText;
    EXPECT_TRUE(std::filesystem::exists(picture));

    std::filesystem::remove(picture);
    const RunResult strict = runProgram({scene, "-o", picture, "--strict"}, m_dir);
    EXPECT_EQ(strict.exitCode, 1);
    EXPECT_NE(strict.stderrText.find("quillon-render: " + scene +
                                     ": failing on the warnings above (--strict)\n"),
              std::string::npos)
        << strict.stderrText;
    EXPECT_FALSE(std::filesystem::exists(picture));
}

TEST_F(RenderProgram, BlankPicturesAreWarnedAbout) {
    QUILLON_REQUIRE_RENDERING();
    RenderRequest request;
    request.scenePath = m_dir.write("empty.iv", "#Inventor V2.1 ascii\nSeparator { }\n");
    request.outputPath = m_dir.file("empty.png");
    request.settings = smallPicture(20, 10, SbColor(0.2f, 0.4f, 0.6f));
    std::string error;
    std::vector<std::string> warnings;
    ASSERT_TRUE(renderSceneFileToPng(request, error, warnings)) << error;
    EXPECT_EQ(warnings, std::vector<std::string>{request.scenePath +
                                                 ": the picture is blank: nothing but the "
                                                 "background was drawn"});

    request.scenePath = m_dir.write("cube.iv", redCubeScene);
    warnings.clear();
    ASSERT_TRUE(renderSceneFileToPng(request, error, warnings)) << error;
    EXPECT_TRUE(warnings.empty()) << warnings.front();
}

TEST_F(RenderProgram, MachineWithoutEglGetsAMessageNotACrash) {
    // The EGL dispatcher finds no driver when pointed at an empty list.
    const RunResult run = runProgram(
        {std::string(QUILLON_EXAMPLES_DIR) + "/toolkit-shapes.iv", "-o", m_dir.file("none.png")},
        m_dir, "__EGL_VENDOR_LIBRARY_DIRS=" + m_dir.file("none"));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.stderrText.rfind("quillon-render: EGL offers no surfaceless platform", 0), 0u)
        << run.stderrText;
    EXPECT_FALSE(std::filesystem::exists(m_dir.file("none.png")));
}
