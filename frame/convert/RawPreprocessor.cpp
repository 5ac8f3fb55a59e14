#include "frame/convert/RawPreprocessor.h"

#include <cstring>
#include <optional>

#include "frame/base/Team.h"
#include "frame/finish/Balance.h"
#include "frame/samples/SampleRow.h"

namespace kvx::frame {
namespace {

/** Scales 8-bit samples to more bits: white stays white. */
void Widen(uint16_t* samples, uint32_t width, int bits) {
    for (uint32_t i = 0; i < width; ++i)
        samples[i] = static_cast<uint16_t>(samples[i] << (bits - 8) | samples[i] >> (16 - bits));
}

void CopyBytes(const SourceView& source, const SourceView& mosaic, uint8_t* memory) {
    const ptrdiff_t step = source.stride != 0 ? source.stride : static_cast<ptrdiff_t>(source.width);
    for (uint32_t row = 0; row < source.height; ++row)
        std::memcpy(memory + row * mosaic.stride, static_cast<const uint8_t*>(source.data) + row * step, source.width);
}

}  // namespace

SourceView RawPreprocessor::Process(const SourceView& source, const Format& format, const Finish* finish,
                                    const Gains& gains) {
    SourceView mosaic = source;
    mosaic.format = format;
    mosaic.stride = static_cast<ptrdiff_t>(RowBytes(format, source.width));
    if (!finish && source.format == format && source.stride >= 0) {
        if (source.stride > 0) mosaic.stride = source.stride;
        return mosaic;
    }
    mosaic.capacity = static_cast<size_t>(mosaic.stride) * source.height;
    uint8_t* memory = m_memory.Of(mosaic.capacity);
    mosaic.data = memory;
    if (format.bits == 8) {
        CopyBytes(source, mosaic, memory);
        return mosaic;
    }
    std::optional<Balance> balance;
    if (finish) balance.emplace(source, *finish, gains, format.bits);
    const bool widens = !finish && source.format.bits < format.bits;
    ForRows(source.height, TeamForSamples(uint64_t{source.width} * source.height), [&](uint32_t row, int) {
        auto* samples = reinterpret_cast<uint16_t*>(memory + row * mosaic.stride);
        ReadRow(source, row, samples);
        if (balance) BalanceRow(balance->OfRow(row), samples, source.width);
        if (widens) Widen(samples, source.width, format.bits);
    });
    return mosaic;
}

}  // namespace kvx::frame
