#pragma once

#include <cstddef>
#include <string>

#include "tools/ToolError.h"
#include "tools/files/Bytes.h"

namespace kvx::tool {

/** The name of a file argument in messages: "-" is spelt out. */
std::string InputName(const std::string& path);

/** The longest file that is read, and how a longer one is refused. */
struct InputLimit {
    size_t bytes;
    ExitCode code;
    const char* reason;
};

/** For frames and pictures: INT_MAX samples of two bytes, the most that a conversion takes. */
constexpr InputLimit kFrameLimit{size_t{1} << 32, ExitCode::Frame, "no frame is that large: cut it into single frames"};

/** The whole content of a file, or of standard input for "-". Throws ExitCode::Input, or what the limit says. */
Bytes ReadInput(const std::string& path, const InputLimit& limit = kFrameLimit);

/** Bytes of a file. Throws ExitCode::Input, also for anything but a regular file, whose size is not known. */
uint64_t InputSize(const std::string& path);

/** At most `bytes` bytes of a regular file; fewer at its end. Throws ExitCode::Input. */
Bytes ReadPart(const std::string& path, uint64_t offset, uint64_t bytes);

}  // namespace kvx::tool
