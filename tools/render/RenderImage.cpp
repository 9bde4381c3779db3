#include "RenderImage.h"

#include <algorithm>

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
