#include "tools/console/Arguments.h"

#include <charconv>
#include <cmath>

#include "tools/ToolError.h"

namespace kvx::tool {

uint64_t ParseNumber(const std::string& option, const std::string& text, uint64_t maximum) {
    uint64_t number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || number > maximum) {
        const std::string range = maximum == UINT64_MAX ? "" : fmt::format(" from 0 to {}", maximum);
        Fail(ExitCode::Usage, "{}: '{}' is not a whole number{}", option, text, range);
    }
    return number;
}

std::vector<double> ParseNumbers(const std::string& option, const std::string& text, size_t count) {
    std::vector<double> numbers(count);
    const char* next = text.data();
    const char* end = next + text.size();
    for (size_t index = 0; index < count; ++index) {
        const auto [stop, error] = std::from_chars(next, end, numbers[index]);
        const bool isSeparated = index + 1 < count ? stop != end && *stop == ',' : stop == end;
        if (error != std::errc() || !isSeparated || !std::isfinite(numbers[index])) {
            Fail(ExitCode::Usage, "{}: '{}' is not {}", option, text,
                 count == 1 ? "a number" : fmt::format("{} numbers separated by commas", count));
        }
        next = stop + 1;
    }
    return numbers;
}

frame::Levels ParseLevels(const std::string& option, const std::string& text) {
    if (text.find(',') == std::string::npos) {
        return ParseNumbers<1>(option, text)[0];
    }
    const std::array<double, 4> levels = ParseNumbers<4>(option, text);
    return {levels[0], levels[1], levels[2], levels[3]};
}

std::array<double, 3> ParseWeights(const std::string& option, const std::string& text) {
    const std::array<double, 3> weights = ParseNumbers<3>(option, text);
    const double sum = weights[0] + weights[1] + weights[2];
    if (std::ranges::min(weights) < 0 || !(sum > 0) || !std::isfinite(sum)) {
        Fail(ExitCode::Usage,
             "{}: '{}' are not weights: give three numbers such as 0.3,0.6,0.1, none negative, with a finite sum above "
             "0",
             option, text);
    }
    return weights;
}

_KvxRect ParseRegion(const std::string& option, const std::string& text) {
    const std::array<double, 4> given = ParseNumbers<4>(option, text);
    std::array<uint32_t, 4> numbers{};
    for (size_t index = 0; index < numbers.size(); ++index) {
        const double number = given[index];
        if (number < 0 || number > INT32_MAX || number != static_cast<uint32_t>(number)) {
            Fail(ExitCode::Usage, "{}: '{}' is not a region: give X,Y,W,H in pixels", option, text);
        }
        numbers[index] = static_cast<uint32_t>(number);
    }
    return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

CLI::Option* AddText(CLI::App& command, const std::string& option, const std::function<void(const std::string&)>& read,
                     const std::string& type, const std::string& help) {
    return command.add_option_function(option, read, help)->type_name(type)->allow_extra_args(false);
}

void AddNumber(CLI::App& command, const std::string& option, std::optional<uint64_t>& number, const std::string& help,
               uint64_t maximum) {
    AddText(
        command, option,
        [option, maximum, &number](const std::string& text) { number = ParseNumber(option, text, maximum); }, "N",
        help);
}

void AddJsonFlag(CLI::App& command, bool& asJson) {
    command.add_flag("--json", asJson, "Print JSON instead of a table");
}

}  // namespace kvx::tool
