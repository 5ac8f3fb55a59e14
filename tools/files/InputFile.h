#pragma once

#include <string>

#include "tools/files/Bytes.h"

namespace kvx::tool {

/** How messages name a file argument: "-" is spelt out. */
std::string InputName(const std::string& path);

/** The whole content of a file, or of standard input for "-". Throws ExitCode::Input. */
Bytes ReadInput(const std::string& path);

}  // namespace kvx::tool
