/** The last rows of a plane that is computed from top to bottom. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kvx::frame {

/** Row r stands at r modulo the number of rows. */
template <class Value>
class RowRing {
public:
    RowRing(size_t rows, size_t values) : m_rows(rows), m_length(values), m_values(rows * values) {}

    Value* Row(int64_t row) {
        const auto count = static_cast<int64_t>(m_rows);
        return m_values.data() + static_cast<size_t>((row % count + count) % count) * m_length;
    }

private:
    size_t m_rows, m_length;
    std::vector<Value> m_values;
};

}  // namespace kvx::frame
