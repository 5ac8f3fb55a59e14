/** An image buffer that detects every byte written outside its pixels. */
#pragma once

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "KvxDemosaicing/KvxImage.h"

namespace kvx::test {

/**
 * `height` rows of `rowBytes` pixel bytes, `lineStep` bytes apart, with guard bytes before, after and between them.
 * `offset` moves the first row away from its natural alignment.
 */
class GuardedImage {
public:
    GuardedImage(uint32_t pixelType, uint32_t width, uint32_t height, size_t rowBytes, size_t lineStep,
                 size_t offset = 0)
        : m_rowBytes(rowBytes), m_step(lineStep), m_rows(height), m_start(kMargin + offset) {
        m_bytes.resize(m_start + lineStep * height + rowBytes + kMargin);
        for (size_t i = 0; i < m_bytes.size(); ++i) m_bytes[i] = GuardAt(i);
        m_record = KvxImage_Make(pixelType, width, height, static_cast<uint32_t>(lineStep), m_bytes.data() + m_start);
        m_record.pixelDepth = 0;  // of a source, the test sets it
    }

    /** Another image of this geometry, with nothing written to it. */
    GuardedImage Fresh() const {
        return {m_record.pixelType, m_record.width, m_record.height, m_rowBytes, m_step, m_start - kMargin};
    }

    GuardedImage(const GuardedImage&) = delete;
    GuardedImage(GuardedImage&&) = default;  // the buffer, and so the record's pointer, stays where it is

    /** The record for a call. A test may change it; the checks below use the true geometry. */
    _KvxImage& Record() {
        return m_record;
    }

    uint8_t* Row(size_t row) {
        return m_bytes.data() + m_start + row * m_step;
    }

    /** The pixel bytes of all rows, without padding. */
    std::vector<uint8_t> Pixels() {
        std::vector<uint8_t> pixels;
        for (size_t row = 0; row < m_rows; ++row) pixels.insert(pixels.end(), Row(row), Row(row) + m_rowBytes);
        return pixels;
    }

    void SetPixels(const std::vector<uint8_t>& pixels) {
        for (size_t row = 0; row < m_rows; ++row) std::memcpy(Row(row), pixels.data() + row * m_rowBytes, m_rowBytes);
    }

    /** True while nothing but pixels was written. */
    bool GuardsIntact() const {
        for (size_t i = 0; i < m_bytes.size(); ++i)
            if (!IsPixel(i) && m_bytes[i] != GuardAt(i)) return false;
        return true;
    }

    /** True while nothing at all was written. */
    bool Untouched() const {
        for (size_t i = 0; i < m_bytes.size(); ++i)
            if (m_bytes[i] != GuardAt(i)) return false;
        return true;
    }

private:
    static constexpr size_t kMargin = 512;

    static uint8_t GuardAt(size_t index) {
        return static_cast<uint8_t>(0xA5 ^ (index * 31));
    }
    bool IsPixel(size_t index) const {
        if (index < m_start || index >= m_start + m_step * m_rows) return false;
        return (index - m_start) % m_step < m_rowBytes;
    }

    std::vector<uint8_t> m_bytes;
    size_t m_rowBytes, m_step, m_rows, m_start;
    _KvxImage m_record{};
};

}  // namespace kvx::test
