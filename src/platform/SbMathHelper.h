#pragma once

// Small arithmetic helpers.
class SbMathHelper {
public:
    // The smallest k with 2^k >= value (0 for values up to 1).
    static int getNextLog2(int value);
};
