/** Bytes between pages that cannot be touched: reading or writing beside them ends the test program. */
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <vector>

namespace kvx::frame::test {

enum class Edge { Front, Back };

/** Room for up to `capacity` bytes, handed out flush with the page in front or with the one behind. */
class GuardedBytes {
public:
    explicit GuardedBytes(size_t capacity) {
        m_page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
        m_room = (capacity + m_page - 1) / m_page * m_page;
        void* pages = mmap(nullptr, m_room + 2 * m_page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (pages == MAP_FAILED) throw std::bad_alloc();
        m_pages = static_cast<uint8_t*>(pages);
        if (mprotect(m_pages + m_page, m_room, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
    }
    GuardedBytes(const GuardedBytes&) = delete;
    GuardedBytes& operator=(const GuardedBytes&) = delete;
    ~GuardedBytes() {
        munmap(m_pages, m_room + 2 * m_page);
    }

    /** Places bytes; what was placed before is gone. A few bytes beside them, as far as there is room, are a guard. */
    uint8_t* Place(const std::vector<uint8_t>& bytes, Edge edge) {
        m_data = m_pages + m_page + (edge == Edge::Front ? 0 : m_room - bytes.size());
        m_size = bytes.size();
        std::fill(GuardBegin(), GuardEnd(), kGuard);
        std::copy(bytes.begin(), bytes.end(), m_data);
        return m_data;
    }
    std::vector<uint8_t> Bytes() const {
        return {m_data, m_data + m_size};
    }
    bool GuardsIntact() const {
        const auto isGuard = [](uint8_t byte) { return byte == kGuard; };
        return std::all_of(GuardBegin(), m_data, isGuard) && std::all_of(m_data + m_size, GuardEnd(), isGuard);
    }

private:
    static constexpr uint8_t kGuard = 0xA5;
    static constexpr ptrdiff_t kMargin = 64;  // more than a vector

    uint8_t* GuardBegin() const {
        return std::max(m_pages + m_page, m_data - kMargin);
    }
    uint8_t* GuardEnd() const {
        return std::min(m_pages + m_page + m_room, m_data + m_size + kMargin);
    }

    uint8_t* m_pages;
    uint8_t* m_data = nullptr;
    size_t m_page, m_room, m_size = 0;
};

}  // namespace kvx::frame::test
