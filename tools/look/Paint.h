#pragma once

#include <string>

namespace kvx::tool {

/** Colours of filters in a terminal. */
class Paint {
public:
    explicit Paint(bool isColoured) : m_isColoured(isColoured) {}

    /** Coloured when standard output is a terminal and the environment variable NO_COLOR is unset or empty. */
    static Paint ForStandardOutput();

    /** `text` on the colour of a filter: 'R', 'G', 'B', 'W' (clear) or 'Y' (none). Unchanged without colours. */
    std::string On(char filter, const std::string& text) const;

private:
    bool m_isColoured;
};

}  // namespace kvx::tool
