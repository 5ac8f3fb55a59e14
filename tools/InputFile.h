#pragma once

#include <string>

#include "tools/Bytes.h"

namespace kvx::tool {

/** The whole content of a file, or of standard input for "-". Throws ExitCode::Input. */
Bytes ReadInput(const std::string& path);

}  // namespace kvx::tool
