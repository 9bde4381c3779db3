#include "platform/SoFarspan.h"

namespace {
int s_count = 0;
}

void SoFarspan::init() {
    ++s_count;
}

void SoFarspan::finish() {
    if (s_count > 0)
        --s_count;
}

int SoFarspan::getInitCount() {
    return s_count;
}
