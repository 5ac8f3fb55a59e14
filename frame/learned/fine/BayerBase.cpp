#include "frame/learned/fine/BayerBase.h"

#include <algorithm>
#include <new>

#include "frame/convert/Component.h"

namespace kvx::frame {
namespace {

/** A pixel of the in-house interpolation depends on no more rows above and below; an even number keeps the phase. */
constexpr int64_t kReach = 18;

template <class Sample>
void ShiftUp(const Sample* in, size_t count, int shift, uint16_t* out) {
    for (size_t i = 0; i < count; ++i) out[i] = static_cast<uint16_t>(in[i] << shift);
}

}  // namespace

BayerBase::BayerBase() : m_component(KvxBayer_CreateComponent(), KvxBayer_DeleteComponent) {
    if (!m_component) throw std::bad_alloc();
    KvxComponent_SetParamInt(KvxBayer_GetComponent(m_component.get()), "BayerAlgType", KvxBayerAlgorithm_IPP);
}

uint32_t BayerBase::Interpolate(const SourceView& mosaic, int64_t top, int64_t bottom, CellSource& source) try {
    const int64_t first = std::max<int64_t>(top / 2 * 2 - kReach, 0);
    const auto rows = static_cast<uint32_t>(std::min<int64_t>((bottom + 1) / 2 * 2 + kReach, mosaic.height) - first);
    const size_t width = mosaic.width;
    const int shift = 16 - mosaic.format.bits;
    auto* const words = reinterpret_cast<uint16_t*>(m_words.Of(rows * width * sizeof(uint16_t)));
    for (uint32_t row = 0; row < rows; ++row) {
        const auto* in = static_cast<const uint8_t*>(mosaic.data) + (first + row) * mosaic.stride;
        if (mosaic.format.bits == 8)
            ShiftUp(in, width, shift, words + row * width);
        else
            ShiftUp(reinterpret_cast<const uint16_t*>(in), width, shift, words + row * width);
    }

    SourceView band = mosaic;
    band.data = words;
    band.height = rows;
    band.format = WithBits(mosaic.format, 16);
    band.stride = static_cast<ptrdiff_t>(width * sizeof(uint16_t));
    DestinationView picture{m_picture.Of(rows * width * 3 * sizeof(uint16_t)),
                            mosaic.width,
                            rows,
                            static_cast<ptrdiff_t>(width * 3 * sizeof(uint16_t)),
                            rows * width * 3 * sizeof(uint16_t),
                            {Family::Colour, 16, Layout::Plain, 0, Order::Rgb}};
    source.data = picture.data;
    source.stride = picture.stride;
    source.firstRow = static_cast<uint32_t>(first);
    source.channels = 3;
    source.sampleBytes = 2;
    source.bits = 16;
    const _KvxImage in = ImageOf(band);
    _KvxImage out = ImageOf(picture);
    return KvxBayer_ConvertImage(m_component.get(), &in, &out);
} catch (const std::bad_alloc&) {
    return 0x80050000u | KvxResult_NoMemory;
}

}  // namespace kvx::frame
