#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace kvx::tool {

/** Opens closed standard streams on /dev/null, so that no file opened later becomes one of them. */
void OpenStandardStreams();

/** Writes one line to standard error, after the command's name. */
void PrintMessage(const std::string& message);

/** Writes to standard error; failures are ignored. */
void WriteStandardError(const std::string& text);

/** Writes to standard output; throws ExitCode::Output when that fails. */
void PrintText(const std::string& text);

/** JSON and a line break. File names need not be UTF-8, JSON must: other bytes are replaced. */
std::string JsonText(const nlohmann::ordered_json& json, int indent = 2);

}  // namespace kvx::tool
