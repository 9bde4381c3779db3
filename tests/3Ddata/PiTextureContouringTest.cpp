#include <Quillon/graph/PbIsovaluesList.h>
#include <Quillon/graph/PbLinearDataMapping.h>

#include "3Ddata/MeshTestHelpers.h"
#include "3Ddata/PiBandColors.h"
#include "3Ddata/PiTextureContouring.h"

#include <Inventor/nodes/SoTexture2.h>

#include <cmath>
#include <cstdlib>

namespace {

// Sets a preference in the environment for the lifetime of the object.
class ScopedPreference {
public:
    explicit ScopedPreference(const char* name) : m_name(name) { setenv(name, "1", 1); }
    ~ScopedPreference() { unsetenv(m_name); }

private:
    const char* m_name;
};

const char* const NONSMOOTH = "QUILLON_TEXTURE_CONTOURING_NONSMOOTH_LEGACY_BEHAVIOUR";
const char* const SMOOTH = "QUILLON_TEXTURE_CONTOURING_SMOOTH_LEGACY_BEHAVIOUR";
const char* const OFFSET = "QUILLON_TEXTURE_CONTOURING_COORD_OFFSET_LEGACY_BEHAVIOUR";

class PiTextureContouringTest : public meshtest::MeshTest {
protected:
    void SetUp() override {
        MeshTest::SetUp();
        m_mapping.setValues(0, SbColor(0, 0, 1), 10, SbColor(1, 0, 0));
    }

    void prepare(const std::vector<float>& isovalues, bool smooth, bool regular = false) {
        if (regular)
            m_list.setRegularIsoList(isovalues.front(), isovalues.back(), int(isovalues.size()));
        else
            m_list.setIrregularIsoList(int(isovalues.size()), isovalues.data());
        m_texture.setDataMapping(&m_mapping);
        m_texture.setSmoothContouring(smooth);
        m_texture.setIsovaluesList(&m_list);
        m_texture.buildTexture();
    }

    // The texel colour that nearest sampling finds at the value.
    SbColor sampledColor(float value) const {
        SbVec2s size;
        int components;
        const unsigned char* image = m_texture.getTexture()->image.getValue(size, components);
        const float s = std::min(std::max(m_texture.getTextureCoord(value), 0.0f), 0.999999f);
        const unsigned char* texel = image + components * int(s * size[0]);
        return SbColor(texel[0] / 255.0f, texel[1] / 255.0f, texel[2] / 255.0f);
    }

    PbLinearDataMapping m_mapping;
    PbIsovaluesList m_list;
    PiTextureContouring m_texture;
};

TEST_F(PiTextureContouringTest, BandsStartAtTheSecondTexelAsThePreferencesSay) {
    // Three isovalues: a texture of 4 texels of 0.25.
    struct Case {
        const char* name;
        bool smooth;
        std::vector<const char*> preferences;
        float s0;
    } cases[] = {
        {"texel centre", false, {}, 0.375f},
        {"legacy flat bands", false, {NONSMOOTH}, 0.2501f},
        {"legacy flat bands without offset", false, {NONSMOOTH, OFFSET}, 0.25f},
        {"the smooth switch leaves flat bands alone", false, {SMOOTH}, 0.375f},
        {"legacy smooth", true, {SMOOTH}, 0.2501f},
    };
    for (const Case& c : cases) {
        std::vector<std::unique_ptr<ScopedPreference>> preferences;
        for (const char* name : c.preferences)
            preferences.push_back(std::make_unique<ScopedPreference>(name));
        prepare({0, 1, 10}, c.smooth);
        EXPECT_EQ(m_texture.getTextureWidth(), 4) << c.name;
        EXPECT_FLOAT_EQ(m_texture.getS0(), c.s0) << c.name;
        EXPECT_FLOAT_EQ(m_texture.getS1(), c.s0 + 0.5f) << c.name;
    }
}

// Each band of an irregular list spans one texel; a regular list scales
// the value range instead.
TEST_F(PiTextureContouringTest, TextureCoordinatesFollowTheBands) {
    prepare({0, 1, 10, 11}, false);
    const float t = 1.0f / 8.0f, s0 = 1.5f * t;
    const float values[] = {0, 0.5f, 1, 5.5f, 10.5f, 11};
    const float expected[] = {s0, s0 + 0.5f * t, s0 + t, s0 + 1.5f * t, s0 + 2.5f * t, s0 + 3 * t};
    SbVec2f coords[6];
    m_texture.getTextureCoords(6, values, coords);
    for (int i = 0; i < 6; ++i) {
        EXPECT_FLOAT_EQ(m_texture.getTextureCoord(values[i]), expected[i]) << values[i];
        EXPECT_FLOAT_EQ(coords[i][0], expected[i]) << values[i];
    }
    prepare({0, 2, 4, 6}, false, true);
    EXPECT_FLOAT_EQ(m_texture.getTextureCoord(3), s0 + 3 * (3 * t / 6));
    EXPECT_FLOAT_EQ(m_texture.getTextureCoord(-2), s0 - 2 * (3 * t / 6));
}

TEST_F(PiTextureContouringTest, FlatTexelsHoldTheBandColourWhereTheBandsValuesFall) {
    const std::vector<float> isovalues = {2, 4, 6, 8};
    for (bool legacy : {false, true}) {
        std::unique_ptr<ScopedPreference> preference;
        if (legacy)
            preference = std::make_unique<ScopedPreference>(NONSMOOTH);
        prepare(isovalues, false);
        for (int band = 0; band <= 4; ++band) {
            const SbColor expected =
                PiBandColors::getValueColor(m_mapping,
                                            PiBandColors::getBandValue(isovalues.data(), 4, band))
                    .color;
            const float low = band > 0 ? isovalues[band - 1] : 0.0f;
            const float high = band < 4 ? isovalues[band] : 10.0f;
            for (float f : {0.05f, 0.5f, 0.95f}) {
                const float value = low + f * (high - low);
                EXPECT_TRUE(sampledColor(value).equals(expected, 1.0f / 255))
                    << (legacy ? "legacy " : "") << "band " << band << " value " << value;
            }
        }
    }
}

TEST_F(PiTextureContouringTest, SmoothTexelsHoldTheColoursOfTheIsovalues) {
    prepare({2, 4, 6, 8}, true);
    SbVec2s size;
    int components;
    const unsigned char* image = m_texture.getTexture()->image.getValue(size, components);
    ASSERT_EQ(size[0], 8);
    for (int k = 0; k < 4; ++k) {
        const SbColor expected = *m_mapping.getRGBColor(2.0f + 2 * k);
        const unsigned char* texel = image + components * (k + 1);
        EXPECT_TRUE(SbColor(texel[0] / 255.0f, texel[1] / 255.0f, texel[2] / 255.0f)
                        .equals(expected, 1.0f / 255));
    }
}

} // namespace
