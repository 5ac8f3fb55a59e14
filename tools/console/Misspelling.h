#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

namespace kvx::tool {

/**
 * A sentence about the first word that is neither a command where one is expected nor a known --option, with the name
 * that was probably meant; nothing if there is no such word. `words` are the arguments, without the name of the tool.
 */
std::optional<std::string> FindMisspelling(CLI::App& tool, const std::vector<std::string>& words);

}  // namespace kvx::tool
