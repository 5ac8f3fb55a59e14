#include "tools/console/Progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "tools/console/Console.h"

namespace kvx::tool {
namespace {

constexpr size_t kBarWidth = 30;
constexpr const char* kWipeLine = "\r\x1b[K";

bool IsTerminal() {
    const char* kind = std::getenv("TERM");
    return ::isatty(STDERR_FILENO) == 1 && kind != nullptr && std::string_view(kind) != "dumb";
}

}  // namespace

Progress::Progress(size_t total) : m_total(total), m_isShown(total > 1 && IsTerminal()) {
    Draw();
}

Progress::~Progress() {
    if (m_isShown) {
        WriteStandardError(kWipeLine);
    }
}

void Progress::Advance() {
    ++m_done;
    Draw();
}

void Progress::Draw() const {
    if (m_isShown) {
        const size_t filled = m_done * kBarWidth / m_total;
        WriteStandardError(
            fmt::format("{}[{:#<{}}{:<{}}] {} of {}", kWipeLine, "", filled, "", kBarWidth - filled, m_done, m_total));
    }
}

}  // namespace kvx::tool
