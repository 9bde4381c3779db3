#pragma once
#include <Inventor/SbVec2f.h>

#include <vector>

class PbDataMapping;
class PbIsovaluesList;
class SoTexture2;

// Colour bands by texture: a one-dimensional texture of colour bands built
// from the data mapping and the isovalues, and one texture coordinate per
// node value.  With n isovalues the texture is W = 2^k >= n + 1 texels of
// width t = 1 / W wide.  Texel 0 is kept for values below the range; the
// isovalues lie one texel apart from s0 on, so that each band spans exactly
// one texel whatever its width in values.  s0 is the centre of texel 1
// (t + t / 2), or, with the legacy preference of the current mode, t +
// 0.0001 (t alone with the legacy coordinate offset too).
//
// Texture layout.  Smooth contouring interpolates the texture linearly:
// texel k + 1 holds the colour of isovalue k, texel 0 and the texels above
// n those of the outer bands.  Flat bands (nearest texel) hold the band
// colours of PiBandColors; with s0 at a texel centre the isovalues fall on
// half texels, so each texel is stored as two pixels of the image and band
// borders fall between pixels.  A band without colour is fully transparent;
// the mapping's transparency, when enabled, lowers the alpha (unless the
// legacy transparency preference asks to ignore it).
class PiTextureContouring {
public:
    PiTextureContouring();
    ~PiTextureContouring();
    PiTextureContouring(const PiTextureContouring&) = delete;
    PiTextureContouring& operator=(const PiTextureContouring&) = delete;

    void setDataMapping(const PbDataMapping* mapping) { m_dataMapping = mapping; }
    // Set before the isovalues list: the mode chooses s0.
    void setSmoothContouring(bool smooth) { m_smooth = smooth; }
    void setIsovaluesList(const PbIsovaluesList* list);
    void buildTexture();
    // The texture node (owned here, referenced by the scene that uses it).
    SoTexture2* getTexture() const { return m_texture; }

    float getTextureCoord(float value) const;
    // One coordinate (s, 0.5) per value.
    void getTextureCoords(int n, const float* values, SbVec2f* coordinates) const;

    int getTextureWidth() const { return m_width; }
    float getS0() const { return m_s0; }
    float getS1() const { return m_s1; }

private:
    bool isCentred() const;
    float getIrregularCoord(float value) const;

    const PbDataMapping* m_dataMapping = nullptr;
    const PbIsovaluesList* m_isovaluesList = nullptr;
    bool m_smooth = false;
    bool m_legacyMode = false;
    std::vector<float> m_isovalues;
    float m_min = 0.0f;
    float m_max = 0.0f;
    bool m_regular = true;
    int m_width = 1;
    float m_texel = 1.0f;
    float m_s0 = 0.0f;
    float m_s1 = 0.0f;
    float m_scale = 0.0f;
    SoTexture2* m_texture = nullptr;
};
