/** The working rows of a TrueSense conversion. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace kvx {

/**
 * One row of the working area. Half of its sites are pan sites, half are colour sites. Each half is a dense array:
 * element j is the site in columns 2j and 2j + 1. All arrays except `pan` are at the colour sites; differences are
 * pan - colour.
 */
template <class Lane>
struct HalfRows {
    Lane* pan;  ///< at the pan sites
    Lane* panAtColour;
    Lane* difference;  ///< of the colour that the site measures
    Lane* diagonal;    ///< at blue sites the difference of red, at red sites that of blue; nothing at green sites
    Lane* red;         ///< differences of all three colours
    Lane* green;
    Lane* blue;
};

/** The four half-rows around a row of sites: element j of each is a neighbour of site j. */
template <class Lane>
struct Neighbours {
    const Lane *left, *right, *up, *down;
};

/**
 * Per-thread memory: the last rows of the working area in a ring, and a few lines. Rows have room for a vector
 * before and behind their elements.
 */
class TrueSenseWorkspace {
public:
    static constexpr int kRingRows = 8;

    /** Makes room for rows of `width` sites, a multiple of 4. @return false without memory */
    bool Reserve(int width) noexcept;

    /** The ring's place for a row; it holds what was written there last with the same Lane. */
    template <class Lane>
    HalfRows<Lane> Row(int row) const {
        Lane* base = reinterpret_cast<Lane*>(m_base + m_halfRowBytes * (kArrays * (row % kRingRows)) + kPadding);
        const size_t step = m_halfRowBytes / sizeof(Lane);
        return {base, base + step, base + 2 * step, base + 3 * step, base + 4 * step, base + 5 * step, base + 6 * step};
    }
    /** A raw row, and the finished planes of one row: red, green, blue. */
    int16_t* Line() const {
        return LineAt(0);
    }
    int16_t* Plane(int channel) const {
        return LineAt(1 + channel);
    }

private:
    static constexpr size_t kArrays = 7, kLines = 4;
    static constexpr size_t kPadding = 256;  // bytes: the widest vector of all instruction sets

    int16_t* LineAt(int index) const {
        return reinterpret_cast<int16_t*>(m_base + m_halfRowBytes * kArrays * kRingRows + m_lineBytes * index +
                                          kPadding);
    }

    std::unique_ptr<uint8_t[]> m_memory;
    uint8_t* m_base = nullptr;  // in the memory, at the start of a cache line
    size_t m_halfRowBytes = 0, m_lineBytes = 0;
};

}  // namespace kvx
