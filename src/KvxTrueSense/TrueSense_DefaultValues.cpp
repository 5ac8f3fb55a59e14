#include "KvxTrueSense/TrueSenseParams.h"

uint32_t TrueSense_DefaultValues(tagTrueSenseParam* params) noexcept {
    *params = kvx::DefaultTrueSenseParams();
    return KvxResult_Success;
}
