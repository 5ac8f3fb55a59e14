#include "frame/learned/weights/EmbeddedWeights.h"

// The symbols are those of Weights.S.
#define KVX_EMBEDDED(name)                                         \
    extern "C" const uint8_t kvx##name##Begin[], kvx##name##End[]; \
    std::span<const uint8_t> kvx::frame::name##Weights() {         \
        return {kvx##name##Begin, kvx##name##End};                 \
    }

KVX_EMBEDDED(BayerFine)
KVX_EMBEDDED(BayerFineNoise)
KVX_EMBEDDED(BayerSwift)
KVX_EMBEDDED(TrueSenseFine)
KVX_EMBEDDED(TrueSenseFineNoise)
KVX_EMBEDDED(TrueSenseSwift)
