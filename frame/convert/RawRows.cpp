#include "frame/convert/RawRows.h"

#include <algorithm>

#include "frame/samples/SampleRow.h"

namespace kvx::frame {
namespace {

/** Scales 8-bit samples to more bits: white stays white. */
void Widen(uint16_t* samples, uint32_t count, int bits) {
    for (uint32_t i = 0; i < count; ++i)
        samples[i] = static_cast<uint16_t>(samples[i] << (bits - 8) | samples[i] >> (16 - bits));
}

}  // namespace

RawRows::RawRows(const SourceView& source, const Format& format, const Finish* finish, const Gains& gains)
    : m_source(source), m_bits(format.bits), m_widens(!finish && source.format.bits < format.bits) {
    if (finish) m_balance.emplace(source, *finish, gains, format.bits);
}

void RawRows::UseCorrected(MosaicCorrection& correction) {
    const Balance balance = m_balance.value_or(Balance(m_source, Finish(), Gains(), static_cast<uint8_t>(m_bits)));
    if (correction.NeedsNeighbours()) {
        m_corrected = correction.Correct(m_source, balance);
        return;
    }
    correction.Prepare(m_source);
    m_correction = &correction;
    m_balance = balance;
    m_widens = false;
}

void RawRows::Read(uint32_t row, uint32_t column, uint32_t count, uint16_t* samples) const noexcept {
    if (m_corrected) {
        std::copy_n(m_corrected + size_t{row} * m_source.width + column, count, samples);
        return;
    }
    const uint16_t* const words = m_balance && !m_correction ? WordsInPlace(m_source, row, column) : nullptr;
    if (!words) ReadSamples(m_source, row, column, count, samples);
    if (m_correction)
        CorrectRow(m_correction->OfRow(row).From(column), m_balance->OfRow(row).From(column), samples, count);
    else if (m_balance)
        BalanceRow(m_balance->OfRow(row).From(column), words ? words : samples, samples, count);
    if (m_widens) Widen(samples, count, m_bits);
}

KvxRowSource RawRows::Source() const {
    // The function below only reads the object.
    return {const_cast<RawRows*>(this),
            [](void* rows, uint32_t row, uint32_t column, uint32_t count, uint16_t* samples) noexcept {
                static_cast<const RawRows*>(rows)->Read(row, column, count, samples);
            }};
}

}  // namespace kvx::frame
