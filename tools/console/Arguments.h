#pragma once

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "KvxDemosaicing/KvxImage.h"
#include "tools/ToolError.h"

namespace kvx::tool {

/** A decimal whole number, nothing before or behind it. Throws ExitCode::Usage, naming the option. */
uint64_t ParseNumber(const std::string& option, const std::string& text, uint64_t maximum = UINT64_MAX);

/** As many numbers, with commas between. Throws ExitCode::Usage, naming the option. */
std::vector<double> ParseNumbers(const std::string& option, const std::string& text, size_t count);

template <size_t count>
std::array<double, count> ParseNumbers(const std::string& option, const std::string& text) {
    std::array<double, count> numbers;
    std::ranges::copy(ParseNumbers(option, text, count), numbers.begin());
    return numbers;
}

/** Three such numbers, none negative, not all zero. Throws ExitCode::Usage, naming the option. */
std::array<double, 3> ParseWeights(const std::string& option, const std::string& text);

/** Four whole numbers: place and size in pixels. Throws ExitCode::Usage, naming the option. */
_KvxRect ParseRegion(const std::string& option, const std::string& text);

/** The value behind a word. Throws ExitCode::Usage, naming the option and the words that there are. */
template <typename Value>
Value ParseChoice(const std::string& option, const std::string& text,
                  const std::vector<std::pair<std::string, Value>>& choices) {
    std::string words;
    for (const auto& [word, value] : choices) {
        if (word == text) {
            return value;
        }
        words += (words.empty() ? "" : ", ") + word;
    }
    Fail(ExitCode::Usage, "{}: '{}' is none: there are {}", option, text, words);
}

/** Adds an option that takes such a word. */
template <typename Target, typename Value>
void AddChoice(CLI::App& command, const std::string& option, Target& target,
               const std::vector<std::pair<std::string, Value>>& choices, const std::string& help) {
    command
        .add_option_function<std::string>(
            option, [=, &target](const std::string& text) { target = ParseChoice(option, text, choices); }, help)
        ->type_name("WORD");
}

/** Adds an option that takes such a whole a number. */
void AddNumber(CLI::App& command, const std::string& option, std::optional<uint64_t>& number, const std::string& help,
               uint64_t maximum = UINT64_MAX);

}  // namespace kvx::tool
