#include "tools/look/Paint.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdlib>

namespace kvx::tool {
namespace {

/** Parameters of the terminal's "select graphic rendition": background, then foreground. */
const char* RenditionOf(char filter) {
    switch (filter) {
        case 'R':
            return "41;97";
        case 'G':
            return "42;30";
        case 'B':
            return "44;97";
        default:
            return "107;30";
    }
}

}  // namespace

Paint Paint::ForStandardOutput() {
    const char* noColor = std::getenv("NO_COLOR");
    return Paint(::isatty(STDOUT_FILENO) != 0 && (noColor == nullptr || *noColor == '\0'));
}

std::string Paint::On(char filter, const std::string& text) const {
    return m_isColoured ? fmt::format("\033[{}m{}\033[0m", RenditionOf(filter), text) : text;
}

}  // namespace kvx::tool
