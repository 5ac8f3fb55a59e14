#include "tools/Arguments.h"

#include <charconv>

#include "tools/ToolError.h"

namespace kvx::tool {

uint64_t ParseNumber(const std::string& option, const std::string& text, uint64_t maximum) {
    uint64_t number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || number > maximum) {
        const std::string range = maximum == UINT64_MAX ? "" : fmt::format(" from 0 to {}", maximum);
        Fail(ExitCode::Usage, "{}: '{}' is no usable whole number{}", option, text, range);
    }
    return number;
}

void AddNumber(CLI::App& command, const std::string& option, std::optional<uint64_t>& number, const std::string& help,
               uint64_t maximum) {
    command
        .add_option_function<std::string>(
            option,
            [option, maximum, &number](const std::string& text) { number = ParseNumber(option, text, maximum); }, help)
        ->type_name("N");
}

}  // namespace kvx::tool
