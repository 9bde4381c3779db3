#include "RenderImage.h"

#include <algorithm>
#include <cstdlib>

Rgb toRgb(const SbColor& color) {
    auto channel = [](float value) {
        return static_cast<unsigned char>(value <= 0.0f   ? 0
                                          : value >= 1.0f ? 255
                                                          : value * 255.0f + 0.5f);
    };
    return Rgb{channel(color[0]), channel(color[1]), channel(color[2])};
}

bool isNear(const Rgb& actual, const Rgb& expected, int tolerance) {
    return std::abs(actual.r - expected.r) <= tolerance &&
           std::abs(actual.g - expected.g) <= tolerance &&
           std::abs(actual.b - expected.b) <= tolerance;
}

RenderImage::RenderImage(int width, int height, int channels)
    : m_width(width), m_height(height), m_channels(channels),
      m_pixels(static_cast<std::size_t>(width) * height * channels) {}

Rgb RenderImage::pixel(int x, int y) const {
    const unsigned char* p = at(x, y);
    return Rgb{p[0], p[1], p[2]};
}

unsigned char RenderImage::alpha(int x, int y) const {
    return m_channels == 4 ? at(x, y)[3] : 255;
}

void RenderImage::flipRows() {
    for (int top = 0, bottom = m_height - 1; top < bottom; ++top, --bottom)
        std::swap_ranges(row(top), row(top) + rowBytes(), row(bottom));
}

bool RenderImage::holdsOnly(const Rgb& color, int tolerance) const {
    for (int y = 0; y < m_height; ++y)
        for (int x = 0; x < m_width; ++x)
            if (!isNear(pixel(x, y), color, tolerance))
                return false;
    return true;
}
