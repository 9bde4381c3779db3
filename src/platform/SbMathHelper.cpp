#include "platform/SbMathHelper.h"

int SbMathHelper::getNextLog2(int value) {
    int log = 0;
    while (log < 30 && (1 << log) < value)
        ++log;
    return log;
}
