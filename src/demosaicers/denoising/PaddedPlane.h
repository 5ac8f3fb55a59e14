/** A plane of working values with a margin on all sides. */
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

namespace kvx {

/** Rows start at cache lines; vectors may read, and write what will be overwritten, kReach values beyond them. */
template <class T>
class PaddedPlane {
public:
    static constexpr int kReach = static_cast<int>(256 / sizeof(T));

    /** @param margin rows above and below; everything starts as `value`. @return false without memory */
    bool Reserve(int width, int height, int margin, T value) noexcept {
        constexpr size_t line = 64;
        m_step = (static_cast<size_t>(width) * sizeof(T) + line - 1) / line * line / sizeof(T) + 2 * size_t{kReach};
        const size_t count = m_step * (static_cast<size_t>(height) + 2 * static_cast<size_t>(margin));
        m_memory.reset(new (std::nothrow) T[count + line / sizeof(T)]);
        if (!m_memory) return false;
        std::fill_n(m_memory.get(), count + line / sizeof(T), value);
        const size_t offset = (line - reinterpret_cast<uintptr_t>(m_memory.get()) % line) % line / sizeof(T);
        m_first = m_memory.get() + offset + static_cast<size_t>(margin) * m_step + kReach;
        return true;
    }
    void Release() noexcept {
        m_memory.reset();
        m_first = nullptr;
    }
    T* Row(int row) const {
        return m_first + row * Step();
    }
    /** Values from one row to the next. */
    ptrdiff_t Step() const {
        return static_cast<ptrdiff_t>(m_step);
    }

private:
    std::unique_ptr<T[]> m_memory;
    T* m_first = nullptr;
    size_t m_step = 0;
};

}  // namespace kvx
