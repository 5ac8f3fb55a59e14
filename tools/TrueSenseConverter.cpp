#include "tools/TrueSenseConverter.h"

#include <new>

namespace kvx::tool {

TrueSenseConverter::TrueSenseConverter(Handle component)
    : Converter(kTrueSenseAlgorithms, KvxTrueSense_GetComponent(component.get())), m_component(std::move(component)) {
    if (!m_component) {
        throw std::bad_alloc();
    }
}

uint32_t TrueSenseConverter::Call(const _KvxImage& source, _KvxImage& destination) {
    return KvxTrueSense_ConvertImage(m_component.get(), &source, &destination);
}

/** White is the end of a tone curve of 12 bits, brought to the depth by a shift. */
uint32_t TrueSenseConverter::White(uint32_t depth) const {
    constexpr uint32_t kToneBits = 12;
    constexpr uint32_t kToneWhite = (1u << kToneBits) - 1;
    const uint32_t outputDepth = Settings().Int("normalizationEnable") != 0 ? 16 : depth;
    return outputDepth < kToneBits ? kToneWhite >> (kToneBits - outputDepth) : kToneWhite << (outputDepth - kToneBits);
}

}  // namespace kvx::tool
