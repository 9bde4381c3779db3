#pragma once
#include <Quillon/graph/PbArray.h>

#include <cstdint>

class PbArrayOfFloat : public PbArray<float> {
public:
    using PbArray<float>::PbArray;
};
