#pragma once

#include <string>
#include <vector>

namespace kvx::tool {

/** Text in columns, each as wide as its longest cell. */
class TextTable {
public:
    explicit TextTable(std::vector<std::string> heading) : m_rows{std::move(heading)} {}

    /** As many cells as the heading has. */
    void AddRow(std::vector<std::string> cells) {
        m_rows.push_back(std::move(cells));
    }

    std::string Text() const;

private:
    std::vector<std::vector<std::string>> m_rows;
};

}  // namespace kvx::tool
