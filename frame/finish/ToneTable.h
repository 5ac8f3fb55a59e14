/** Tables from 16-bit values to a destination's depth, with a tone curve or linear. */
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "KvxFrame/Finish.h"

namespace kvx::frame {

/** Maps 0 to `white` onto 0 to `newWhite`, rounded half up. */
constexpr uint32_t ScaledSample(uint64_t sample, uint64_t white, uint64_t newWhite) {
    return static_cast<uint32_t>((2 * sample * newWhite + white) / (2 * white));
}

/** A table of 65536 entries, computed again only when its parameters change. */
class ToneTable {
public:
    /** Values up to `white` scaled to `bits`; larger ones become white. */
    const uint16_t* Scaling(uint32_t white, uint8_t bits);
    /** The finish's tone curve from 16-bit values, rounded to `bits`. */
    const uint16_t* Curve(const Finish& finish, uint8_t bits);
    /** The same for 8 bits. */
    const uint8_t* ByteCurve(const Finish& finish);
    /** Call it when the finish changes. */
    void Forget() {
        m_content.reset();
    }

private:
    enum class Kind : uint8_t { Scaling, Curve };
    struct Content {
        Kind kind;
        uint32_t from;
        uint8_t bits;
    };
    template <class Rule>
    const uint16_t* Filled(const Content& content, const Rule& rule);

    std::vector<uint16_t> m_entries;
    std::vector<uint8_t> m_bytes;  // the entries if they have 8 bits: less of the cache
    std::optional<Content> m_content;
};

}  // namespace kvx::frame
