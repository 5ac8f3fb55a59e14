#include "ToolRun.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace kvx::tool {
namespace {

/** A file without a name that carries one of the standard streams: unlike a pipe it never blocks. */
class StreamFile {
public:
    explicit StreamFile(const Bytes& content = {}) : m_file(std::tmpfile(), &std::fclose) {
        const bool isWritten =
            m_file && (content.empty() || std::fwrite(content.data(), content.size(), 1, m_file.get()) == 1);
        if (!isWritten) {
            throw std::runtime_error("no temporary file");
        }
        std::rewind(m_file.get());
    }

    int Descriptor() const {
        return ::fileno(m_file.get());
    }

    Bytes Content() const {
        Bytes content(static_cast<size_t>(::lseek(Descriptor(), 0, SEEK_END)));
        const ssize_t count = ::pread(Descriptor(), content.data(), content.size(), 0);
        content.resize(static_cast<size_t>(std::max<ssize_t>(count, 0)));
        return content;
    }

private:
    std::unique_ptr<FILE, int (*)(FILE*)> m_file;
};

/** Of the child: a file of ours, or the one at `path`, or nothing for "-". */
void Connect(int stream, const StreamFile& file, const std::string& path = {}) {
    if (path == "-") {
        ::close(stream);
    } else {
        ::dup2(path.empty() ? file.Descriptor() : ::open(path.c_str(), O_WRONLY | O_CLOEXEC), stream);
    }
}

[[noreturn]] void BecomeTool(const std::vector<std::string>& arguments, const ToolSurroundings& surroundings) {
    if (surroundings.fileSizeLimit) {
        const rlimit limit{*surroundings.fileSizeLimit, *surroundings.fileSizeLimit};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    std::vector<char*> words = {const_cast<char*>(KVX_DEMOSAIC)};
    for (const std::string& argument : arguments) {
        words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    ::execv(KVX_DEMOSAIC, words.data());
    ::_exit(127);
}

}  // namespace

ToolResult RunTool(const std::vector<std::string>& arguments, const ToolSurroundings& surroundings) {
    const StreamFile input(surroundings.standardInput);
    const StreamFile output;
    const StreamFile error;
    const pid_t child = ::fork();
    if (child == 0) {
        Connect(STDIN_FILENO, input);
        Connect(STDOUT_FILENO, output, surroundings.standardOutputPath);
        Connect(STDERR_FILENO, error, surroundings.standardErrorPath);
        BecomeTool(arguments, surroundings);
    }
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    const Bytes messages = error.Content();
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1,
            output.Content(),
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
