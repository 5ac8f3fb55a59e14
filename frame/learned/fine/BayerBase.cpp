#include "frame/learned/fine/BayerBase.h"

#include <algorithm>
#include <new>

#include "frame/convert/Component.h"

namespace kvx::frame {
namespace {

/** A pixel of the in-house interpolation depends on no more rows above and below; an even number keeps the phase. */
constexpr int64_t kReach = 18;

constexpr size_t kPixelBytes = 3 * sizeof(uint16_t);

}  // namespace

BayerBase::BayerBase() : m_component(KvxBayer_CreateComponent(), KvxBayer_DeleteComponent) {
    if (!m_component) throw std::bad_alloc();
    KvxComponent_SetParamInt(KvxBayer_GetComponent(m_component.get()), "BayerAlgType", KvxBayerAlgorithm_IPP);
}

uint32_t BayerBase::Prepare(const SourceView& mosaic, const KvxRowSource& rows, size_t count) {
    m_picture.Of(std::min<size_t>(count + 2 * kReach + 2, mosaic.height) * mosaic.width * kPixelBytes);
    m_rows = rows;
    m_shift = 16 - mosaic.format.bits;
    m_firstRow = 0;
    m_width = mosaic.width;
    return Convert(mosaic.format, 1, 1);  // the component allocates at its first frame, whatever its size
}

uint32_t BayerBase::Interpolate(const SourceView& mosaic, const KvxRowSource& rows, int64_t top, int64_t bottom) {
    const int64_t first = std::max<int64_t>(top / 2 * 2 - kReach, 0);
    const int64_t end = std::min<int64_t>((bottom + 1) / 2 * 2 + kReach, mosaic.height);
    m_rows = rows;
    m_firstRow = static_cast<uint32_t>(first);
    return Convert(mosaic.format, mosaic.width, static_cast<uint32_t>(end - first));
}

/** Converts rows of the mosaic to the picture. */
uint32_t BayerBase::Convert(const Format& format, uint32_t width, uint32_t rows) {
    const _KvxImage frame = KvxImage_Make(LibraryCode(WithBits(format, 16)).value_or(0), width, rows, 0, nullptr);
    const KvxRowSource source{
        this, [](void* base, uint32_t row, uint32_t column, uint32_t count, uint16_t* samples) noexcept {
            const auto& self = *static_cast<BayerBase*>(base);
            self.m_rows.read(self.m_rows.context, self.m_firstRow + row, column, count, samples);
            for (uint32_t i = 0; i < count; ++i) samples[i] = static_cast<uint16_t>(samples[i] << self.m_shift);
        }};
    const KvxPixelSink sink{this, [](void* base, uint32_t row, uint32_t column, uint32_t count, const uint16_t* red,
                                     const uint16_t* green, const uint16_t* blue) noexcept {
                                static_cast<BayerBase*>(base)->Put(row, column, count, red, green, blue);
                            }};
    return KvxBayer_ConvertRows(m_component.get(), &frame, &source, &sink);
}

void BayerBase::Put(uint32_t row, uint32_t column, uint32_t count, const uint16_t* red, const uint16_t* green,
                    const uint16_t* blue) {
    auto* out = reinterpret_cast<uint16_t*>(m_picture.Of(0)) + 3 * (row * m_width + column);
    for (uint32_t i = 0; i < count; ++i, out += 3) {
        out[0] = red[i];
        out[1] = green[i];
        out[2] = blue[i];
    }
}

KvxRowSource BayerBase::Picture() const {
    // The function below only reads the object.
    return {const_cast<BayerBase*>(this),
            [](void* base, uint32_t row, uint32_t column, uint32_t count, uint16_t* words) noexcept {
                auto& self = *static_cast<BayerBase*>(base);
                const auto* from = reinterpret_cast<const uint16_t*>(self.m_picture.Of(0)) +
                                   3 * ((row - self.m_firstRow) * self.m_width + column);
                std::copy_n(from, size_t{3} * count, words);
            }};
}

}  // namespace kvx::frame
