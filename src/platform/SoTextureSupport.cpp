#include "platform/SoTextureSupport.h"

bool SoTextureSupport::isClampSupported() {
    return true;
}
