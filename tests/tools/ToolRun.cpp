#include "ToolRun.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

namespace kvx::tool {
namespace {

using File = std::unique_ptr<FILE, int (*)(FILE*)>;

/** A file without a name that carries one of the standard streams: unlike a pipe it never blocks. */
File StreamFile(const Bytes& content = {}) {
    File file(std::tmpfile(), &std::fclose);
    if (!content.empty()) {
        EXPECT_EQ(std::fwrite(content.data(), 1, content.size(), file.get()), content.size());
    }
    std::rewind(file.get());
    return file;
}

Bytes ContentOf(const File& file) {
    Bytes content(static_cast<size_t>(::lseek(::fileno(file.get()), 0, SEEK_END)));
    EXPECT_EQ(::pread(::fileno(file.get()), content.data(), content.size(), 0), std::ssize(content));
    return content;
}

/** Of the child: a file of ours, or the one at `path`, or nothing for "-". */
void Connect(int stream, const File& file, const std::string& path = {}) {
    if (path == "-") {
        ::close(stream);
    } else {
        ::dup2(path.empty() ? ::fileno(file.get()) : ::open(path.c_str(), O_WRONLY | O_CLOEXEC), stream);
    }
}

}  // namespace

ToolResult RunTool(const std::vector<std::string>& arguments, const ToolSurroundings& surroundings) {
    const File input = StreamFile(surroundings.standardInput), output = StreamFile(), error = StreamFile();
    std::vector<char*> words = {const_cast<char*>(KVX_DEMOSAIC)};
    for (const std::string& argument : arguments) {
        words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        Connect(STDIN_FILENO, input);
        Connect(STDOUT_FILENO, output, surroundings.standardOutputPath);
        Connect(STDERR_FILENO, error, surroundings.standardErrorPath);
        const rlim_t bytes = surroundings.fileSizeLimit.value_or(RLIM_INFINITY);
        const rlimit limit{bytes, bytes};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ::execv(KVX_DEMOSAIC, words.data());
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    const Bytes messages = ContentOf(error);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1,
            ContentOf(output),
            {messages.begin(), messages.end()},
            usage.ru_maxrss};
}

ToolResult RunSuccessfully(const std::vector<std::string>& arguments, const ToolSurroundings& surroundings) {
    ToolResult result = RunTool(arguments, surroundings);
    EXPECT_EQ(result.exitCode, 0) << fmt::format("kvx-demosaic {}", fmt::join(arguments, " ")) << "\n"
                                  << result.standardError;
    return result;
}

std::string TextOf(const std::vector<std::string>& arguments) {
    const Bytes output = RunSuccessfully(arguments).standardOutput;
    return {output.begin(), output.end()};
}

void ExpectRefusal(const ToolResult& result, int exitCode, const std::vector<std::string>& fragments) {
    EXPECT_EQ(result.exitCode, exitCode) << result.standardError;
    EXPECT_TRUE(result.standardOutput.empty());
    EXPECT_EQ(result.standardError.find("kvx-demosaic: "), 0u) << result.standardError;
    EXPECT_EQ(result.standardError.find('\n'), result.standardError.size() - 1) << result.standardError;
    for (const std::string& fragment : fragments) {
        EXPECT_NE(result.standardError.find(fragment), std::string::npos) << fragment << "\n" << result.standardError;
    }
}

}  // namespace kvx::tool
