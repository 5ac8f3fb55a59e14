#include "tools/files/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "tools/ToolError.h"
#include "tools/files/FileDescriptor.h"

namespace kvx::tool {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void FailWriting(const std::string& name) {
    Fail(ExitCode::Output, "{}: cannot be written: {}", name, std::strerror(errno));
}

void WriteAll(int descriptor, const Bytes& content, const std::string& name) {
    size_t written = 0;
    while (written < content.size()) {
        const ssize_t count = ::write(descriptor, content.data() + written, content.size() - written);
        if (count < 0 && errno != EINTR) {
            FailWriting(name);
        }
        written += count > 0 ? static_cast<size_t>(count) : 0;
    }
}

/**
 * A file that is gone again unless it is moved to its final name. It has no name at first, so that not even a killed
 * process leaves anything behind; on file systems that cannot do this it has a hidden one.
 */
class TemporaryFile {
public:
    explicit TemporaryFile(const fs::path& directory)
        : m_directory(directory), m_file(::open(Folder().c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0666)) {
        if (m_file.Get() < 0 || ::access(Self().c_str(), F_OK) != 0) {
            m_path = UnusedName();
            m_file = FileDescriptor(::open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!m_path.empty() && m_file.Get() >= 0) {
            ::unlink(m_path.c_str());
        }
    }

    int Descriptor() const {
        return m_file.Get();
    }

    bool MoveTo(const fs::path& target) {
        if (m_path.empty() && LinkTo(target)) {
            const bool isClosed = m_file.Close();
            if (!isClosed) {
                ::unlink(target.c_str());
            }
            return isClosed;
        }
        // There is an old file: only a rename replaces it in one step.
        if (m_path.empty() && (errno != EEXIST || !LinkTo(m_path = UnusedName()))) {
            m_path.clear();
            return false;
        }
        const bool isMoved = m_file.Close() && ::rename(m_path.c_str(), target.c_str()) == 0;
        if (!isMoved) {
            const int reason = errno;
            ::unlink(m_path.c_str());
            errno = reason;
        }
        return isMoved;
    }

private:
    fs::path Folder() const {
        return m_directory.empty() ? "." : m_directory;
    }

    /** The way to the file while it has no name. */
    std::string Self() const {
        return fmt::format("/proc/self/fd/{}", m_file.Get());
    }

    bool LinkTo(const fs::path& name) const {
        return ::linkat(AT_FDCWD, Self().c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    }

    /** The leftover of a killed process may bear the same process number. */
    fs::path UnusedName() const {
        static std::atomic<unsigned> count = 0;
        fs::path name;
        std::error_code error;
        do {
            name = m_directory / fmt::format(".kvx-demosaic.{}.{}.tmp", ::getpid(), count++);
        } while (fs::exists(name, error));
        return name;
    }

    fs::path m_directory;
    fs::path m_path;  // empty while the file has no name
    FileDescriptor m_file;
};

/** Renaming would bypass the old file's write protection and lose its mode: both are kept as with plain writing. */
void KeepMode(const fs::path& target, int descriptor, const std::string& name) {
    struct stat status {};
    if (::stat(target.c_str(), &status) != 0) {
        return;
    }
    if (::access(target.c_str(), W_OK) != 0 || ::fchmod(descriptor, status.st_mode & 0777) != 0) {
        FailWriting(name);
    }
}

void ReplaceFile(const fs::path& target, const Bytes& content, const std::string& name) {
    TemporaryFile temporary(target.parent_path());
    if (temporary.Descriptor() < 0) {
        FailWriting(name);
    }
    KeepMode(target, temporary.Descriptor(), name);
    WriteAll(temporary.Descriptor(), content, name);
    if (!temporary.MoveTo(target)) {
        FailWriting(name);
    }
}

void WriteDevice(const std::string& path, const Bytes& content) {
    FileDescriptor device(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (device.Get() < 0) {
        FailWriting(path);
    }
    WriteAll(device.Get(), content, path);
    if (!device.Close()) {
        FailWriting(path);
    }
}

}  // namespace

void WriteOutput(const std::string& path, const Bytes& content) {
    if (path == "-") {
        WriteAll(STDOUT_FILENO, content, "standard output");
        return;
    }
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::is_directory(status)) {
        Fail(ExitCode::Output, "{}: is a directory: give the name of a file in it", path);
    }
    // Devices and pipes are written to: renaming would put a plain file in their place.
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        WriteDevice(path, content);
        return;
    }
    // A symbolic link stays a link, its target is replaced.
    const fs::path target = fs::weakly_canonical(path, error);
    ReplaceFile(error ? fs::path(path) : target, content, path);
}

void MakeDirectory(const std::string& path) {
    std::error_code error;
    fs::create_directories(path, error);
    if (error) {
        Fail(ExitCode::Output, "{}: cannot be made: {}", path, error.message());
    }
}

void RequireDistinct(const std::string& input, const std::string& output) {
    std::error_code error;
    if (input != "-" && output != "-" && fs::is_regular_file(output, error) && fs::equivalent(input, output, error)) {
        Fail(ExitCode::Usage, "{}: is input and output at once: give the output another name", output);
    }
}

}  // namespace kvx::tool
