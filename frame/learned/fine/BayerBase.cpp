#include "frame/learned/fine/BayerBase.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "frame/convert/Component.h"
#include "frame/samples/SampleAt.h"

namespace kvx::frame {
namespace {

/** A pixel of the in-house interpolation depends on no more rows above and below; an even number keeps the phase. */
constexpr int64_t kReach = 18;

constexpr size_t kWordBytes = sizeof(uint16_t), kPixelBytes = 3 * kWordBytes;

template <class T>
void ShiftUp(const uint8_t* in, size_t count, int shift, uint16_t* out) {
    for (size_t i = 0; i < count; ++i) out[i] = static_cast<uint16_t>(SampleAt<T>(in, i) << shift);
}

}  // namespace

BayerBase::BayerBase() : m_component(KvxBayer_CreateComponent(), KvxBayer_DeleteComponent) {
    if (!m_component) throw std::bad_alloc();
    KvxComponent_SetParamInt(KvxBayer_GetComponent(m_component.get()), "BayerAlgType", KvxBayerAlgorithm_IPP);
}

uint32_t BayerBase::Prepare(const SourceView& mosaic, size_t rows) {
    const size_t pixels = (std::min<size_t>(rows + 2 * kReach + 2, mosaic.height)) * mosaic.width;
    m_picture.Of(pixels * kPixelBytes);
    std::memset(m_words.Of(pixels * kWordBytes), 0, kWordBytes);
    return Convert(mosaic.format, 1, 1);  // the component allocates at its first frame, whatever its size
}

uint32_t BayerBase::Interpolate(const SourceView& mosaic, int64_t top, int64_t bottom, CellSource& source) {
    const int64_t first = std::max<int64_t>(top / 2 * 2 - kReach, 0);
    const auto rows = static_cast<uint32_t>(std::min<int64_t>((bottom + 1) / 2 * 2 + kReach, mosaic.height) - first);
    const size_t width = mosaic.width;
    const int shift = 16 - mosaic.format.bits;
    auto* const words = reinterpret_cast<uint16_t*>(m_words.Of(rows * width * kWordBytes));
    for (uint32_t row = 0; row < rows; ++row) {
        const auto* in = static_cast<const uint8_t*>(mosaic.data) + (first + row) * mosaic.stride;
        if (mosaic.format.bits == 8)
            ShiftUp<uint8_t>(in, width, shift, words + row * width);
        else
            ShiftUp<uint16_t>(in, width, shift, words + row * width);
    }
    source.data = m_picture.Of(rows * width * kPixelBytes);
    source.stride = static_cast<ptrdiff_t>(width * kPixelBytes);
    source.firstRow = static_cast<uint32_t>(first);
    source.channels = 3;
    source.sampleBytes = 2;
    source.bits = 16;
    return Convert(mosaic.format, mosaic.width, rows);
}

/** Converts the first rows of the words to the picture. */
uint32_t BayerBase::Convert(const Format& format, uint32_t width, uint32_t rows) {
    const size_t pixels = size_t{width} * rows;
    const SourceView band{m_words.Of(pixels * kWordBytes),
                          width,
                          rows,
                          static_cast<ptrdiff_t>(width * kWordBytes),
                          pixels * kWordBytes,
                          WithBits(format, 16)};
    const DestinationView picture{m_picture.Of(pixels * kPixelBytes),
                                  width,
                                  rows,
                                  static_cast<ptrdiff_t>(width * kPixelBytes),
                                  pixels * kPixelBytes,
                                  {Family::Colour, 16, Layout::Plain, 0, Order::Rgb}};
    const _KvxImage in = ImageOf(band);
    _KvxImage out = ImageOf(picture);
    return KvxBayer_ConvertImage(m_component.get(), &in, &out);
}

}  // namespace kvx::frame
