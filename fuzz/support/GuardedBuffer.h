/** Memory of an exact size between pages that cannot be touched. */
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <vector>

#include "support/Input.h"

namespace kvx::fuzz {

/** Which end lies at a page that cannot be touched, so that the first byte beyond it ends the program. */
enum class Edge { End, Begin };

class GuardedBuffer {
public:
    explicit GuardedBuffer(size_t size, Edge edge = Edge::End) : m_size(size) {
        const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
        m_pages = (size + page - 1) / page * page;
        m_mapped = m_pages + 2 * page;
        void* mapped = mmap(nullptr, m_mapped, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        Require(mapped != MAP_FAILED, "memory for the fuzzer");
        m_mapping = static_cast<uint8_t*>(mapped);
        m_inner = m_mapping + page;
        if (m_pages > 0) Require(mprotect(m_inner, m_pages, PROT_READ | PROT_WRITE) == 0, "memory for the fuzzer");
        m_begin = edge == Edge::Begin ? m_inner : m_inner + m_pages - size;
    }
    GuardedBuffer(const std::vector<uint8_t>& content, Edge edge) : GuardedBuffer(content.size(), edge) {
        if (m_size > 0) std::memcpy(m_begin, content.data(), m_size);
    }
    GuardedBuffer(const GuardedBuffer&) = delete;
    ~GuardedBuffer() {
        munmap(m_mapping, m_mapped);
    }

    uint8_t* Data() const {
        return m_begin;
    }
    size_t Size() const {
        return m_size;
    }
    void MakeReadOnly() {
        if (m_pages > 0) Require(mprotect(m_inner, m_pages, PROT_READ) == 0, "memory for the fuzzer");
    }
    std::vector<uint8_t> Content() const {
        return {m_begin, m_begin + m_size};
    }

private:
    size_t m_size, m_pages, m_mapped;
    uint8_t *m_mapping, *m_inner, *m_begin;
};

}  // namespace kvx::fuzz
