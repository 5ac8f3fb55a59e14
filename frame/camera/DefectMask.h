/** The defective pixels of a frame: a bit for each. */
#pragma once

#include <bit>
#include <cstdint>
#include <vector>

namespace kvx::frame {

class DefectMask {
public:
    static constexpr uint32_t kWordBits = 64;

    /** A frame without defects. Allocates only if the frame grows. */
    void Clear(uint32_t width, uint32_t height) {
        m_rowWords = (width + kWordBits - 1) / kWordBits;
        m_words.assign(size_t{m_rowWords} * height, 0);
    }
    void Set(uint32_t row, uint32_t column) {
        Row(row)[column / kWordBits] |= uint64_t{1} << column % kWordBits;
    }
    void Unset(uint32_t row, uint32_t column) {
        Row(row)[column / kWordBits] &= ~(uint64_t{1} << column % kWordBits);
    }
    bool Has(uint32_t row, uint32_t column) const {
        return m_words[size_t{row} * m_rowWords + column / kWordBits] >> column % kWordBits & 1;
    }
    /** The bits of a row, from the lowest bit of the first word. */
    uint64_t* Row(uint32_t row) {
        return m_words.data() + size_t{row} * m_rowWords;
    }
    /** Calls `body(column)` for the defects of a row. */
    template <class Body>
    void ForEach(uint32_t row, const Body& body) const {
        const uint64_t* const words = m_words.data() + size_t{row} * m_rowWords;
        for (uint32_t word = 0; word < m_rowWords; ++word)
            for (uint64_t bits = words[word]; bits != 0; bits &= bits - 1)
                body(word * kWordBits + static_cast<uint32_t>(std::countr_zero(bits)));
    }

private:
    uint32_t m_rowWords = 0;
    std::vector<uint64_t> m_words;
};

}  // namespace kvx::frame
