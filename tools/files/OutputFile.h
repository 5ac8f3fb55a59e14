#pragma once

#include <string>

#include "tools/files/Bytes.h"

namespace kvx::tool {

/**
 * Writes a whole file, or standard output for "-". The file appears complete or not at all: an old one stays until its
 * successor is on the disk. Throws ExitCode::Output.
 */
void WriteOutput(const std::string& path, const Bytes& content);

/** Makes a directory, and those above it, where there is none. Throws ExitCode::Output. */
void MakeDirectory(const std::string& path);

/** Throws ExitCode::Usage when both paths are the same existing file, which writing would destroy. */
void RequireDistinct(const std::string& input, const std::string& output);

}  // namespace kvx::tool
