#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

namespace kvx::tool {

/** Exit codes of the command; scripts rely on them, so no value ever changes its meaning. */
enum class ExitCode {
    Success = 0,
    Unexpected = 1,
    Usage = 2,
    Input = 3,
    Frame = 4,
    Output = 5,
    Library = 6,
    SomeFailed = 7,
};

/** A failure that ends the command: one line for the user, and the exit code. */
class ToolError : public std::runtime_error {
public:
    ToolError(ExitCode code, const std::string& message) : std::runtime_error(message), m_code(code) {}

    ExitCode Code() const {
        return m_code;
    }

private:
    ExitCode m_code;
};

/** The exception that is being handled, whatever its type, as the command reports it. */
ToolError CurrentFailure();

template <typename... Args>
[[noreturn]] void Fail(ExitCode code, fmt::format_string<Args...> message, Args&&... args) {
    throw ToolError(code, fmt::format(message, std::forward<Args>(args)...));
}

}  // namespace kvx::tool
