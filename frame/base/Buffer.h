/** Working memory that only grows. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace kvx::frame {

class Buffer {
public:
    /** At least `size` bytes with any content. @throws std::bad_alloc */
    uint8_t* Of(size_t size) {
        if (size > m_size) {
            m_size = 0;
            m_bytes.reset();
            m_bytes.reset(new uint8_t[size]);  // not filled, unlike make_unique's
            m_size = size;
        }
        return m_bytes.get();
    }
    void Release() noexcept {
        m_bytes.reset();
        m_size = 0;
    }

private:
    std::unique_ptr<uint8_t[]> m_bytes;
    size_t m_size = 0;
};

}  // namespace kvx::frame
