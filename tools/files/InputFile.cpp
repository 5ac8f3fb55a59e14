#include "tools/files/InputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "tools/files/FileDescriptor.h"

namespace kvx::tool {
namespace {

constexpr size_t kChunkBytes = 1u << 20;

[[noreturn]] void FailReading(const std::string& path) {
    Fail(ExitCode::Input, "{}: cannot be read: {}", InputName(path), std::strerror(errno));
}

[[noreturn]] void FailTooLong(const std::string& path, const InputLimit& limit) {
    Fail(limit.code, "{}: holds more than {} bytes; {}", InputName(path), limit.bytes, limit.reason);
}

/** Bytes to ask for at once: the rest of a regular file and one more, which shows its end; a stream in chunks. */
size_t FirstRead(int descriptor, const std::string& path, const InputLimit& limit) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        return kChunkBytes;
    }
    const off_t rest = std::max<off_t>(status.st_size - ::lseek(descriptor, 0, SEEK_CUR), 0);
    if (static_cast<size_t>(rest) > limit.bytes) {
        FailTooLong(path, limit);
    }
    return static_cast<size_t>(rest) + 1;
}

Bytes ReadAll(int descriptor, const std::string& path, const InputLimit& limit) {
    Bytes content(FirstRead(descriptor, path, limit));
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
        if (filled > limit.bytes) {
            FailTooLong(path, limit);
        }
        if (filled == content.size()) {
            content.resize(filled + std::max(filled, kChunkBytes));
        }
    }
    content.resize(filled);
    return content;
}

FileDescriptor Opened(const std::string& path) {
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.Get() < 0) {
        FailReading(path);
    }
    return file;
}

}  // namespace

std::string InputName(const std::string& path) {
    return path == "-" ? "standard input" : path;
}

Bytes ReadInput(const std::string& path, const InputLimit& limit) {
    if (path == "-") {
        return ReadAll(STDIN_FILENO, path, limit);
    }
    return ReadAll(Opened(path).Get(), path, limit);
}

uint64_t InputSize(const std::string& path) {
    struct stat status {};
    if (path == "-" || ::fstat(Opened(path).Get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        Fail(ExitCode::Input, "{}: is no regular file: frames can only be counted in one", InputName(path));
    }
    return static_cast<uint64_t>(status.st_size);
}

Bytes ReadPart(const std::string& path, uint64_t offset, uint64_t bytes) {
    const uint64_t size = InputSize(path);
    const FileDescriptor file = Opened(path);
    Bytes content(std::min(bytes, size - std::min(offset, size)));
    for (size_t filled = 0; filled < content.size();) {
        const ssize_t count =
            ::pread(file.Get(), content.data() + filled, content.size() - filled, static_cast<off_t>(offset + filled));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            FailReading(path);
        }
        filled += static_cast<size_t>(count);
    }
    return content;
}

}  // namespace kvx::tool
