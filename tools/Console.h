#pragma once

#include <string>

namespace kvx::tool {

/** Writes one line to standard error, behind the command's name. */
void PrintMessage(const std::string& message);

/** Writes to standard output; throws ExitCode::Output when it does not take the text. */
void PrintText(const std::string& text);

/** How messages name a file argument: "-" is spelt out. */
std::string InputName(const std::string& path);
std::string OutputName(const std::string& path);

}  // namespace kvx::tool
