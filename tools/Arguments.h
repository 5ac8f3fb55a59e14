#pragma once

#include <CLI/CLI.hpp>
#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace kvx::tool {

/** A decimal whole number, nothing before or behind it. Throws ExitCode::Usage, naming the option. */
uint64_t ParseNumber(const std::string& option, const std::string& text, uint64_t maximum = UINT64_MAX);

/** Three numbers with commas between, none negative, not all zero. Throws ExitCode::Usage, naming the option. */
std::array<double, 3> ParseWeights(const std::string& option, const std::string& text);

/** Adds an option that takes such a whole a number. */
void AddNumber(CLI::App& command, const std::string& option, std::optional<uint64_t>& number, const std::string& help,
               uint64_t maximum = UINT64_MAX);

}  // namespace kvx::tool
