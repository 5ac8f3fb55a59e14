#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <string>

namespace kvx::tool {

/** A decimal whole number, nothing before or behind it. Throws ExitCode::Usage, naming the option. */
uint64_t ParseNumber(const std::string& option, const std::string& text, uint64_t maximum = UINT64_MAX);

/** Adds an option that takes such a number. */
void AddNumber(CLI::App& command, const std::string& option, std::optional<uint64_t>& number, const std::string& help,
               uint64_t maximum = UINT64_MAX);

}  // namespace kvx::tool
