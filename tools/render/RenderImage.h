#pragma once
#include <Inventor/SbColor.h>

#include <cstddef>
#include <vector>

// One pixel's colour channels, 0 to 255.
struct Rgb {
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;
};

// The bytes a colour of channels between 0 and 1 becomes in a picture.
Rgb toRgb(const SbColor& color);

// Every channel within tolerance of the expected one.
bool isNear(const Rgb& actual, const Rgb& expected, int tolerance);

// A rendered picture: rows stored top-down, each pixel RGB or RGBA bytes.
class RenderImage {
public:
    RenderImage() = default;
    RenderImage(int width, int height, int channels);

    int width() const { return m_width; }
    int height() const { return m_height; }
    int channels() const { return m_channels; }
    bool empty() const { return m_pixels.empty(); }
    std::size_t rowBytes() const { return static_cast<std::size_t>(m_width) * m_channels; }

    // Colour of the pixel in column x, row y, counted from the top-left corner.
    Rgb pixel(int x, int y) const;
    // Alpha of that pixel; 255 for an RGB image.
    unsigned char alpha(int x, int y) const;

    unsigned char* row(int y) { return m_pixels.data() + y * rowBytes(); }
    const unsigned char* row(int y) const { return m_pixels.data() + y * rowBytes(); }
    unsigned char* data() { return m_pixels.data(); }
    const unsigned char* data() const { return m_pixels.data(); }

    // True when every pixel is near color: a picture of the background
    // alone, where nothing was drawn.
    bool holdsOnly(const Rgb& color, int tolerance) const;

    // Reverses the order of the rows (the GL reads pictures bottom-up).
    void flipRows();

private:
    const unsigned char* at(int x, int y) const { return row(y) + x * m_channels; }

    int m_width = 0;
    int m_height = 0;
    int m_channels = 0;
    std::vector<unsigned char> m_pixels;
};
