#include "KvxTrueSense/TrueSenseParams.h"
#include "pipeline/ToneScales.h"

uint32_t TrueSense_DefaultValues(tagTrueSenseParam* params) noexcept {
    *params = kvx::DefaultTrueSenseParams();
    return KvxResult_Success;
}

const uint16_t* TrueSense_DefaultToneTable() noexcept {
    return kvx::Tonescale12Table12.data();
}
