#include "tools/BayerConverter.h"

#include <new>
#include <string_view>

#include "KvxDemosaicing/KvxBayerFlat.h"
#include "tools/ToolError.h"

namespace kvx::tool {
namespace {

/** The number by which the flat functions know a Bayer pattern, from a name such as "BayerGR8". */
uint8_t PatternNumber(uint32_t pixelType) {
    constexpr std::string_view kPatterns = "GR RG BG GB";
    return static_cast<uint8_t>(kPatterns.find(std::string_view(KvxPixelFormat_ByCode(pixelType)->name).substr(5, 2)) /
                                3);
}

}  // namespace

BayerConverter::BayerConverter(Handle component)
    : Converter(kBayerAlgorithms, KvxBayer_GetComponent(component.get())), m_component(std::move(component)) {
    if (!m_component) {
        throw std::bad_alloc();
    }
}

/** The component narrows 10 and 12-bit frames only, and bilinearly: the flat functions take all depths. */
uint32_t BayerConverter::ConvertToBytes(const _KvxImage& source, _KvxImage& destination) const {
    const bool blueFirst = destination.pixelType == KvxFormat_BGR8;
    const auto convert = blueFirst ? BayerToBGR_16u8u_C1C3R : BayerToRGB_16u8u_C1C3R;
    const _KvxSize size{source.width, source.height};
    // For the component 3 and 4 mean bilinear; the flat functions would do nothing.
    const int64_t number = Algorithm();
    const int algorithm = number > KvxBayerAlgorithm_EdgeAware ? KvxBayerAlgorithm_Bilinear : static_cast<int>(number);
    return convert(static_cast<const uint16_t*>(source.data), {0, 0, size.width, size.height}, size,
                   static_cast<int>(source.lineStep), static_cast<int>(source.pixelDepth),
                   static_cast<uint8_t*>(destination.data), static_cast<int>(destination.lineStep),
                   PatternNumber(source.pixelType), algorithm);
}

uint32_t BayerConverter::Call(const _KvxImage& source, _KvxImage& destination) {
    const bool narrows = source.pixelDepth > 8 && destination.pixelDepth == 8;
    return narrows ? ConvertToBytes(source, destination)
                   : KvxBayer_ConvertImage(m_component.get(), &source, &destination);
}

uint32_t BayerConverter::White(uint32_t depth) const {
    return (1u << depth) - 1;
}

}  // namespace kvx::tool
