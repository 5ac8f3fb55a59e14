#include "tools/files/TemporaryFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <functional>
#include <utility>

namespace kvx::tool {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kMode = 0666;
constexpr int kMostNames = 1000;

/** Hashed, since a name of its own may be too long for more letters. */
fs::path HiddenName(const fs::path& target, int number) {
    const size_t hash = std::hash<std::string>()(target.filename().string());
    return target.parent_path() / fmt::format(".kvx-demosaic.{:016x}.{}.tmp", hash, number);
}

bool IsNameOf(const fs::path& name, int file) {
    struct stat byName {};
    struct stat byFile {};
    return ::lstat(name.c_str(), &byName) == 0 && ::fstat(file, &byFile) == 0 && byName.st_dev == byFile.st_dev &&
           byName.st_ino == byFile.st_ino;
}

/** Living processes hold the lock of their file until it has its final name. */
bool Lock(int file) {
    return ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;  // some file systems have no locks
}

void RemoveLeftover(const fs::path& name) {
    const FileDescriptor file(::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (file.Get() >= 0 && ::flock(file.Get(), LOCK_EX | LOCK_NB) == 0 && IsNameOf(name, file.Get())) {
        ::unlink(name.c_str());
    }
}

/** Calls `make` with one hidden name after the other until it succeeds, or fails for another reason than EEXIST. */
template <typename Make>
fs::path MakeHidden(const fs::path& target, const Make& make) {
    for (int number = 0; number < kMostNames; ++number) {
        fs::path name = HiddenName(target, number);
        RemoveLeftover(name);
        if (make(name)) {
            return name;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    return {};
}

}  // namespace

TemporaryFile::TemporaryFile(FileDescriptor file, fs::path name) : m_file(std::move(file)), m_name(std::move(name)) {}

TemporaryFile::TemporaryFile(TemporaryFile&& other) noexcept
    : m_file(std::move(other.m_file)), m_name(std::exchange(other.m_name, fs::path())) {}

TemporaryFile::~TemporaryFile() {
    if (!m_name.empty()) {
        const int reason = errno;
        ::unlink(m_name.c_str());
        errno = reason;
    }
}

TemporaryFile TemporaryFile::WithoutName(const fs::path& target) {
    const fs::path directory = target.has_parent_path() ? target.parent_path() : ".";
    FileDescriptor file(::open(directory.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, kMode));
    Lock(file.Get());
    return {std::move(file), {}};
}

TemporaryFile TemporaryFile::WithName(const fs::path& target) {
    FileDescriptor file(-1);
    fs::path name = MakeHidden(target, [&file](const fs::path& candidate) {
        file = FileDescriptor(::open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kMode));
        if (file.Get() >= 0 && !(Lock(file.Get()) && IsNameOf(candidate, file.Get()))) {
            file.Close();  // another process took it for a leftover
            errno = EEXIST;
        }
        return file.Get() >= 0;
    });
    return {std::move(file), std::move(name)};
}

bool TemporaryFile::LinkTo(const fs::path& name) const {
    if (::linkat(m_file.Get(), "", AT_FDCWD, name.c_str(), AT_EMPTY_PATH) == 0) {
        return true;
    }
    const std::string self = fmt::format("/proc/self/fd/{}", m_file.Get());  // for kernels that refuse the above
    return errno == ENOENT && ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

bool TemporaryFile::MoveTo(const fs::path& target) {
    // Some systems report a failed write only when a descriptor is closed; closing ours would release the lock.
    if (::close(::dup(m_file.Get())) != 0) {
        return false;
    }
    if (m_name.empty()) {
        if (LinkTo(target)) {
            return true;
        }
        // There is an old file: only a rename replaces it in one step.
        if (errno == EEXIST) {
            m_name = MakeHidden(target, [this](const fs::path& name) { return LinkTo(name); });
        }
    }
    const bool isMoved = !m_name.empty() && ::rename(m_name.c_str(), target.c_str()) == 0;
    if (isMoved) {
        m_name.clear();
    }
    return isMoved;
}

}  // namespace kvx::tool
