#pragma once

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "KvxDemosaicing/KvxImage.h"
#include "KvxFrame/Finish.h"
#include "tools/ToolError.h"

namespace kvx::tool {

/** A decimal whole number and nothing else. Throws ExitCode::Usage, naming the option. */
uint64_t ParseNumber(const std::string& option, const std::string& text, uint64_t maximum = UINT64_MAX);

/** `count` numbers, separated by commas. Throws ExitCode::Usage, naming the option. */
std::vector<double> ParseNumbers(const std::string& option, const std::string& text, size_t count);

template <size_t count>
std::array<double, count> ParseNumbers(const std::string& option, const std::string& text) {
    std::array<double, count> numbers;
    std::ranges::copy(ParseNumbers(option, text, count), numbers.begin());
    return numbers;
}

/** One number, or four, separated by commas. Throws as above. */
frame::Levels ParseLevels(const std::string& option, const std::string& text);

/** Three such numbers, none negative, with a finite sum above 0. Throws ExitCode::Usage, naming the option. */
std::array<double, 3> ParseWeights(const std::string& option, const std::string& text);

/** Four whole numbers: position and size in pixels. Throws ExitCode::Usage, naming the option. */
_KvxRect ParseRegion(const std::string& option, const std::string& text);

/** The value that a word stands for. Throws ExitCode::Usage, naming the option and all words. */
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
    Fail(ExitCode::Usage, "{}: '{}' is unknown: choose one of {}", option, text, words);
}

/** Adds an option whose value `read` takes; `type` stands for the value in the help. */
CLI::Option* AddText(CLI::App& command, const std::string& option, const std::function<void(const std::string&)>& read,
                     const std::string& type, const std::string& help);

/** Adds an option that takes one of these words. */
template <typename Target, typename Value>
CLI::Option* AddChoice(CLI::App& command, const std::string& option, Target& target,
                       const std::vector<std::pair<std::string, Value>>& choices, const std::string& help) {
    return AddText(
        command, option, [=, &target](const std::string& text) { target = ParseChoice(option, text, choices); }, "WORD",
        help);
}

/** Adds an option that takes a whole number. */
void AddNumber(CLI::App& command, const std::string& option, std::optional<uint64_t>& number, const std::string& help,
               uint64_t maximum = UINT64_MAX);

/** Adds --json. */
void AddJsonFlag(CLI::App& command, bool& asJson);

}  // namespace kvx::tool
