#include "tools/console/TextTable.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvx::tool {

std::string TextTable::Text() const {
    std::vector<size_t> widths(m_rows.front().size());
    for (const auto& row : m_rows) {
        for (size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], row[column].size());
        }
    }
    std::string text;
    for (const auto& row : m_rows) {
        for (size_t column = 0; column + 1 < row.size(); ++column) {
            text += fmt::format("{:<{}}  ", row[column], widths[column]);
        }
        text += row.back() + "\n";
    }
    return text;
}

}  // namespace kvx::tool
