#pragma once

// What the texture units can do.
class SoTextureSupport {
public:
    // Whether texture coordinates outside [0, 1] can be clamped to the
    // edge texels; every OpenGL that the toolkit renders with can.
    static bool isClampSupported();
};
