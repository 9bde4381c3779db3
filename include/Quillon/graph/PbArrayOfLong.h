#pragma once
#include <Quillon/graph/PbArray.h>

#include <cstdint>

class PbArrayOfLong : public PbArray<int32_t> {
public:
    using PbArray<int32_t>::PbArray;
};
