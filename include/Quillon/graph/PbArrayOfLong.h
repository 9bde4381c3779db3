#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbArray.h>

#include <cstdint>

class QUILLON_API PbArrayOfLong : public PbArray<int32_t> {
public:
    using PbArray<int32_t>::PbArray;
};
