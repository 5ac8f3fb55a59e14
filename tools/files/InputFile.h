#pragma once

#include <cstddef>
#include <string>

#include "tools/ToolError.h"
#include "tools/files/Bytes.h"
#include "tools/files/FileDescriptor.h"

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

/** Throws ExitCode::Input for what is no regular file, such as a pipe: nothing is read from it. */
void RequireRegular(const std::string& path);

/** A file that is read in parts. One without a size, such as a pipe or standard input, is read at once. */
class InputFile {
public:
    /** Opens the file, or standard input for "-". Throws as ReadInput(). */
    explicit InputFile(const std::string& path);

    /** Content in memory. */
    explicit InputFile(Bytes content);

    uint64_t Size() const {
        return m_size;
    }

    /** The bytes from `offset` on, fewer at the end of the file. Throws ExitCode::Input, also for a file cut since. */
    Bytes Part(uint64_t offset, uint64_t bytes) const;

    /** Reads all that is not in memory yet. Throws as ReadInput(). */
    const Bytes& Whole();

private:
    std::string m_path;
    FileDescriptor m_file{-1};  ///< negative for content in memory
    Bytes m_content;
    uint64_t m_size = 0;
};

}  // namespace kvx::tool
