#include "tools/files/InputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "tools/ToolError.h"
#include "tools/files/FileDescriptor.h"

namespace kvx::tool {
namespace {

constexpr size_t kChunkBytes = 1u << 20;
/** The largest frame that a conversion takes: INT_MAX samples of two bytes. Also ends reading from endless devices. */
constexpr size_t kMaximumBytes = size_t{1} << 32;

[[noreturn]] void FailReading(const std::string& path) {
    Fail(ExitCode::Input, "{}: cannot be read: {}", InputName(path), std::strerror(errno));
}

/** Bytes to ask for at once: a regular file with the one more that shows its end, a stream in chunks. */
size_t FirstRead(int descriptor) {
    struct stat status {};
    const bool isRegular = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    return isRegular ? std::min(static_cast<size_t>(status.st_size) + 1, kMaximumBytes + 1) : kChunkBytes;
}

Bytes ReadAll(int descriptor, const std::string& path) {
    Bytes content(FirstRead(descriptor));
    size_t filled = 0;
    while (true) {
        const ssize_t count = ::read(descriptor, content.data() + filled, content.size() - filled);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            FailReading(path);
        }
        if (count == 0) {
            break;
        }
        filled += static_cast<size_t>(count);
        if (filled > kMaximumBytes) {
            Fail(ExitCode::Frame, "{}: holds more than {} bytes; no frame is that large: cut it into single frames",
                 InputName(path), kMaximumBytes);
        }
        if (filled == content.size()) {
            content.resize(filled + std::max(filled, kChunkBytes));
        }
    }
    content.resize(filled);
    return content;
}

}  // namespace

std::string InputName(const std::string& path) {
    return path == "-" ? "standard input" : path;
}

Bytes ReadInput(const std::string& path) {
    if (path == "-") {
        return ReadAll(STDIN_FILENO, path);
    }
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.Get() < 0) {
        FailReading(path);
    }
    return ReadAll(file.Get(), path);
}

}  // namespace kvx::tool
