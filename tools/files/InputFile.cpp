#include "tools/files/InputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

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

void RequireRegular(const std::string& path) {
    struct stat status {};
    if (path == "-" || ::fstat(Opened(path).Get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        Fail(ExitCode::Input, "{}: is no regular file: frames can only be counted in one", InputName(path));
    }
}

InputFile::InputFile(const std::string& path) : m_path(path) {
    FileDescriptor file = path == "-" ? FileDescriptor(-1) : Opened(path);
    struct stat status {};
    if (file.Get() >= 0 && ::fstat(file.Get(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
        m_file = std::move(file);
        m_size = static_cast<uint64_t>(status.st_size);
    } else {  // some files of the system say that they are empty and are not
        m_content = ReadAll(path == "-" ? STDIN_FILENO : file.Get(), path, kFrameLimit);
        m_size = m_content.size();
    }
}

InputFile::InputFile(Bytes content) : m_content(std::move(content)), m_size(m_content.size()) {}

Bytes InputFile::Part(uint64_t offset, uint64_t bytes) const {
    offset = std::min(offset, m_size);
    bytes = std::min(bytes, m_size - offset);
    if (m_content.size() == m_size) {
        const auto start = m_content.begin() + static_cast<ptrdiff_t>(offset);
        return {start, start + static_cast<ptrdiff_t>(bytes)};
    }
    Bytes content(bytes);
    for (size_t filled = 0; filled < bytes;) {
        const ssize_t count =
            ::pread(m_file.Get(), content.data() + filled, bytes - filled, static_cast<off_t>(offset + filled));
        if (count == 0) {
            Fail(ExitCode::Input, "{}: has become shorter while it was read", InputName(m_path));
        }
        if (count < 0 && errno != EINTR) {
            FailReading(m_path);
        }
        filled += static_cast<size_t>(std::max<ssize_t>(count, 0));
    }
    return content;
}

const Bytes& InputFile::Whole() {
    if (m_size > kFrameLimit.bytes) {
        FailTooLong(m_path, kFrameLimit);
    }
    if (m_content.size() < m_size) {
        m_content = Part(0, m_size);
    }
    return m_content;
}

}  // namespace kvx::tool
