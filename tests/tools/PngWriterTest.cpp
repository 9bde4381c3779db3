#include "ToolTestFiles.h"

#include "render/PngWriter.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

// Every byte different, so that swapped rows, columns or channels show.
RenderImage patterned(int width, int height, int channels) {
    RenderImage image(width, height, channels);
    for (std::size_t i = 0; i < image.rowBytes() * height; ++i)
        image.data()[i] = static_cast<unsigned char>(i * 7 + 3);
    return image;
}

void expectSamePixels(const RenderImage& expected, const RenderImage& actual) {
    ASSERT_EQ(expected.width(), actual.width());
    ASSERT_EQ(expected.height(), actual.height());
    ASSERT_EQ(expected.channels(), actual.channels());
    for (int y = 0; y < expected.height(); ++y)
        for (std::size_t i = 0; i < expected.rowBytes(); ++i)
            ASSERT_EQ(expected.row(y)[i], actual.row(y)[i]) << "row " << y << ", byte " << i;
}

} // namespace

TEST(PngWriter, WritesPixelsThatLibpngReadsBack) {
    ScratchDir dir;
    for (int channels : {3, 4}) {
        const RenderImage image = patterned(5, 3, channels);
        const std::string path = dir.file("pattern" + std::to_string(channels) + ".png");
        std::string error;
        ASSERT_TRUE(writePng(path, image, error)) << error;
        expectSamePixels(image, readPngFile(path));
    }
}

TEST(PngWriter, ReportsFilesItCannotWrite) {
    ScratchDir dir;
    std::string error;
    const std::string missingDir = dir.file("no-such-dir/picture.png");
    EXPECT_FALSE(writePng(missingDir, patterned(2, 2, 3), error));
    EXPECT_NE(error.find(missingDir), std::string::npos) << error;
    EXPECT_NE(error.find("No such file or directory"), std::string::npos) << error;

    error.clear();
    const std::string path = dir.file("empty.png");
    EXPECT_FALSE(writePng(path, RenderImage(), error));
    EXPECT_NE(error.find(path), std::string::npos) << error;
    EXPECT_FALSE(std::filesystem::exists(path));
}
