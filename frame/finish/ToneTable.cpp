#include "frame/finish/ToneTable.h"

#include <algorithm>
#include <cmath>

namespace kvx::frame {
namespace {

constexpr uint32_t kEntries = 65536;
constexpr uint32_t kWhite = kEntries - 1;

/** The sRGB curve of IEC 61966-2-1, from light to code. */
double Encoded(double light) {
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

/** Linear interpolation between the table's values, rounded half up. */
uint32_t Interpolated(const std::vector<uint16_t>& table, uint32_t value) {
    const uint64_t last = table.size() - 1, position = value * last;
    const uint64_t index = position / kWhite, rest = position % kWhite;
    const uint64_t right = table[std::min(index + 1, last)];
    return static_cast<uint32_t>((2 * (table[index] * (kWhite - rest) + right * rest) + kWhite) / 2 / kWhite);
}

uint32_t CurveAt(const Finish& finish, uint32_t value) {
    switch (finish.tone) {
        case ToneCurve::Srgb:
            return static_cast<uint32_t>(std::lround(Encoded(static_cast<double>(value) / kWhite) * kWhite));
        case ToneCurve::Table:
            return Interpolated(finish.table, value);
        case ToneCurve::Linear:
            break;
    }
    return value;
}

}  // namespace

template <class Rule>
const uint16_t* ToneTable::Filled(const Content& content, const Rule& rule) {
    const bool isThere = m_content && m_content->kind == content.kind && m_content->from == content.from &&
                         m_content->bits == content.bits;
    if (!isThere) {
        m_content.reset();
        m_entries.resize(kEntries);
        for (uint32_t value = 0; value < kEntries; ++value) m_entries[value] = static_cast<uint16_t>(rule(value));
        m_bytes.clear();
        if (content.bits == 8) m_bytes.assign(m_entries.begin(), m_entries.end());
        m_content = content;
    }
    return m_entries.data();
}

const uint16_t* ToneTable::Scaling(uint32_t white, uint8_t bits) {
    return Filled({Kind::Scaling, white, bits}, [white, newWhite = (1u << bits) - 1](uint32_t value) {
        return ScaledSample(std::min(value, white), white, newWhite);
    });
}

const uint16_t* ToneTable::Curve(const Finish& finish, uint8_t bits) {
    return Filled({Kind::Curve, kWhite, bits}, [&finish, newWhite = (1u << bits) - 1](uint32_t value) {
        return ScaledSample(CurveAt(finish, value), kWhite, newWhite);
    });
}

const uint8_t* ToneTable::ByteCurve(const Finish& finish) {
    Curve(finish, 8);
    return m_bytes.data();
}

}  // namespace kvx::frame
