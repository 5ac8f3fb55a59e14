#pragma once

#include <filesystem>
#include <string>

#include "tools/files/Bytes.h"

namespace kvx::tool {

/** The file that writing to `path` reaches: symbolic links are followed, even one to a file that does not exist yet. */
std::filesystem::path ResolvedPath(const std::string& path);

/**
 * Writes a whole file, or standard output for "-". The file appears complete or not at all: an old one stays until the
 * new one is complete. Throws ExitCode::Output.
 */
void WriteOutput(const std::string& path, const Bytes& content);

/** The same for content in pieces. `encode` may be called again if the file must be written in another way. */
void WriteOutput(const std::string& path, const std::function<void(const ContentSink&)>& encode);

/** Creates a directory, and those above it, unless it exists. Throws ExitCode::Output. */
void MakeDirectory(const std::string& path);

/** Throws ExitCode::Usage when both paths are the same existing file, which writing would destroy. */
void RequireDistinct(const std::string& input, const std::string& output);

}  // namespace kvx::tool
