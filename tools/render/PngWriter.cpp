#include "PngWriter.h"

#include <png.h>

#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// libpng reports errors through a callback that must not return; the
// message is kept here before the jump back into writeRows.
struct PngFailure {
    std::string message;
};

void onPngError(png_structp png, png_const_charp message) {
    static_cast<PngFailure*>(png_get_error_ptr(png))->message = message;
    png_longjmp(png, 1);
}

void onPngWarning(png_structp, png_const_charp) {}

bool writeRows(std::FILE* file, const RenderImage& image, std::string& error) {
    PngFailure failure;
    png_structp png =
        png_create_write_struct(PNG_LIBPNG_VER_STRING, &failure, onPngError, onPngWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_write_struct(&png, nullptr);
        error = "out of memory while preparing the PNG writer";
        return false;
    }
    std::vector<png_const_bytep> rows(image.height());
    for (int y = 0; y < image.height(); ++y)
        rows[y] = image.row(y);
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        error = "PNG encoding failed: " + failure.message;
        return false;
    }
    png_init_io(png, file);
    png_set_IHDR(png, info, image.width(), image.height(), 8,
                 image.channels() == 4 ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_write_rows(png, const_cast<png_bytepp>(rows.data()), image.height());
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return true;
}

} // namespace

bool writePng(const std::string& path, const RenderImage& image, std::string& error) {
    if (image.empty() || (image.channels() != 3 && image.channels() != 4)) {
        error = "cannot write " + path + ": the picture is empty or not RGB/RGBA";
        return false;
    }
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "wb"));
    if (!file) {
        error = "cannot write " + path + ": " + std::strerror(errno);
        return false;
    }
    std::string encodeError;
    if (!writeRows(file.get(), image, encodeError)) {
        error = "cannot write " + path + ": " + encodeError;
        return false;
    }
    if (std::fclose(file.release()) != 0) {
        error = "cannot write " + path + ": " + std::strerror(errno);
        return false;
    }
    return true;
}
