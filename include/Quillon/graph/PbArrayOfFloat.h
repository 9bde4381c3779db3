#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbArray.h>

#include <cstdint>

class QUILLON_API PbArrayOfFloat : public PbArray<float> {
public:
    using PbArray<float>::PbArray;
};
