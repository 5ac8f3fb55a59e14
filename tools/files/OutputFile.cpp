#include "tools/files/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "tools/ToolError.h"
#include "tools/files/FileDescriptor.h"
#include "tools/files/TemporaryFile.h"

namespace kvx::tool {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void FailWriting(const std::string& name) {
    Fail(ExitCode::Output, "{}: cannot be written: {}", name, std::strerror(errno));
}

using Encoder = std::function<void(const ContentSink&)>;

void WriteAll(int descriptor, const Encoder& encode, const std::string& name) {
    encode([&](const uint8_t* piece, size_t bytes) {
        size_t written = 0;
        while (written < bytes) {
            const ssize_t count = ::write(descriptor, piece + written, bytes - written);
            if (count < 0 && errno != EINTR) {
                FailWriting(name);
            }
            written += count > 0 ? static_cast<size_t>(count) : 0;
        }
    });
}

/** Renaming would bypass the write protection and lose the mode of the old file: keeps both, as plain writing does. */
void KeepMode(const fs::path& target, int descriptor, const std::string& name) {
    struct stat status {};
    if (::stat(target.c_str(), &status) != 0) {
        return;
    }
    if (::access(target.c_str(), W_OK) != 0 || ::fchmod(descriptor, status.st_mode & 0777) != 0) {
        FailWriting(name);
    }
}

/** False, with errno set, when the file cannot be made or moved; other failures are thrown. */
bool ReplaceFile(TemporaryFile temporary, const fs::path& target, const Encoder& encode, const std::string& name) {
    if (temporary.Descriptor() < 0) {
        return false;
    }
    KeepMode(target, temporary.Descriptor(), name);
    WriteAll(temporary.Descriptor(), encode, name);
    return temporary.MoveTo(target);
}

void WriteDevice(const std::string& path, const Encoder& encode) {
    FileDescriptor device(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (device.Get() < 0) {
        FailWriting(path);
    }
    WriteAll(device.Get(), encode, path);
    if (!device.Close()) {
        FailWriting(path);
    }
}

}  // namespace

fs::path ResolvedPath(const std::string& path) {
    constexpr int kMostLinks = 40;  // as the kernel follows
    std::error_code error;
    fs::path target = path;
    for (int links = 0; links < kMostLinks && fs::is_symlink(target, error); ++links) {
        target = target.parent_path() / fs::read_symlink(target, error);
    }
    const fs::path canonical = fs::weakly_canonical(target, error);
    return error ? target : canonical;
}

void WriteOutput(const std::string& path, const Bytes& content) {
    WriteOutput(path, [&](const ContentSink& sink) { sink(content.data(), content.size()); });
}

void WriteOutput(const std::string& path, const Encoder& encode) {
    if (path == "-") {
        WriteAll(STDOUT_FILENO, encode, "standard output");
        return;
    }
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::status_known(status)) {
        Fail(ExitCode::Output, "{}: cannot be written: {}", path, error.message());
    }
    if (fs::is_directory(status)) {
        Fail(ExitCode::Output, "{}: is a directory: give the name of a file in it", path);
    }
    // Renaming would put a plain file in the place of a device or a pipe.
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        WriteDevice(path, encode);
        return;
    }
    const fs::path target = ResolvedPath(path);
    if (!ReplaceFile(TemporaryFile::WithoutName(target), target, encode, path) &&
        !ReplaceFile(TemporaryFile::WithName(target), target, encode, path)) {
        FailWriting(path);
    }
}

void MakeDirectory(const std::string& path) {
    std::error_code error;
    fs::create_directories(path, error);
    if (error) {
        Fail(ExitCode::Output, "{}: cannot be created: {}", path, error.message());
    }
}

void RequireDistinct(const std::string& input, const std::string& output) {
    std::error_code error;
    if (input != "-" && output != "-" && fs::is_regular_file(output, error) && fs::equivalent(input, output, error)) {
        Fail(ExitCode::Usage, "{}: is both input and output: give the output another name", output);
    }
}

}  // namespace kvx::tool
