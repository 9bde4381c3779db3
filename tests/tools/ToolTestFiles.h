#pragma once
#include "render/RenderImage.h"

#include <png.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

// A file path in a directory of its own for the running test, removed with
// everything in it at the end of the test.
class ScratchDir {
public:
    ScratchDir() {
        const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
        m_path = std::filesystem::temp_directory_path() /
                 ("quillon-" + std::string(test->test_suite_name()) + "-" + test->name() + "-" +
                  std::to_string(::getpid()));
        std::filesystem::create_directories(m_path);
    }
    ~ScratchDir() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    ScratchDir(const ScratchDir&) = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;

    std::string file(const std::string& name) const { return (m_path / name).string(); }
    std::string write(const std::string& name, const std::string& contents) const {
        std::ofstream(file(name)) << contents;
        return file(name);
    }

private:
    std::filesystem::path m_path;
};

// Reads a PNG file with libpng, independently of the code under test, as
// RGBA when the file has alpha and RGB otherwise; the image is empty when
// the file cannot be read.
inline RenderImage readPngFile(const std::string& path) {
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&png, path.c_str()))
        return RenderImage();
    const bool withAlpha = (png.format & PNG_FORMAT_FLAG_ALPHA) != 0;
    png.format = withAlpha ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
    RenderImage image(static_cast<int>(png.width), static_cast<int>(png.height), withAlpha ? 4 : 3);
    if (!png_image_finish_read(&png, nullptr, image.data(), 0, nullptr)) {
        png_image_free(&png);
        return RenderImage();
    }
    return image;
}

inline const char* const redCubeScene = "#Inventor V2.1 ascii\n"
                                        "Separator {\n"
                                        "  LightModel { model BASE_COLOR }\n"
                                        "  BaseColor { rgb 1 0 0 }\n"
                                        "  Cube { }\n"
                                        "}\n";
