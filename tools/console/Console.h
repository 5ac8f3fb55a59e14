#pragma once

#include <string>

namespace kvx::tool {

/** Writes one line to standard error, behind the command's name. */
void PrintMessage(const std::string& message);

/** Writes to standard output; throws ExitCode::Output when it does not take the text. */
void PrintText(const std::string& text);

}  // namespace kvx::tool
