#include "tools/files/OutputFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "ExpectToolError.h"
#include "TemporaryDirectory.h"

namespace kvx::tool {
namespace {

namespace fs = std::filesystem;

TEST(OutputFile, ReplacesOldFilesWithTheirModesAndLinksAndGivesNewOnesTheUsualMode) {
    const TemporaryDirectory directory;
    const std::string path = directory.Write("old.png", {1, 2, 3}), link = directory.Path("link");
    constexpr auto mode = fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(path, mode);
    fs::create_symlink(path, link);
    const mode_t old = ::umask(022);
    WriteOutput(path, {6});
    EXPECT_EQ(directory.Read("old.png"), Bytes{6});
    for (const std::string& to : {link, directory.Path("new.png")}) WriteOutput(to, {4, 5});
    ::umask(old);
    EXPECT_EQ(directory.Read("old.png"), (Bytes{4, 5}));
    EXPECT_EQ(fs::status(path).permissions(), mode);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(static_cast<unsigned>(fs::status(directory.Path("new.png")).permissions()), 0644u);
    EXPECT_EQ(directory.Entries(), (std::set<std::string>{"link", "new.png", "old.png"}));
}

TEST(OutputFile, DevicesStayDevices) {
    const TemporaryDirectory directory;
    const std::string fifo = directory.Path("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    std::fstream reader(fifo, std::ios::in | std::ios::out | std::ios::binary);  // both: opening does not block
    WriteOutput(fifo, {7, 8});
    EXPECT_EQ(reader.get(), 7);
    EXPECT_EQ(reader.get(), 8);
    EXPECT_TRUE(fs::is_fifo(fifo));
}

TEST(OutputFile, KilledInTheMiddleOfAFileNothingIsLeft) {
    const TemporaryDirectory directory;
    const int probe = ::open(directory.Path(".").c_str(), O_WRONLY | O_TMPFILE, 0600);
    if (probe < 0) {
        GTEST_SKIP() << "this file system has no files without a name";
    }
    ::close(probe);
    const std::string old = directory.Write("old", {1});
    for (const std::string& path : {old, directory.Path("new")}) {
        const pid_t child = ::fork();
        if (child == 0) {
            constexpr rlimit kLimit{4096, 4096};
            ::setrlimit(RLIMIT_FSIZE, &kLimit);
            std::signal(SIGXFSZ, SIG_DFL);  // ends the process when it writes on
            WriteOutput(path, Bytes(8192));
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(directory.Entries(), std::set<std::string>{"old"});
        EXPECT_EQ(directory.Read("old"), Bytes{1});
    }
}

TEST(OutputFile, FailuresNameTheFileAndLeaveNothing) {
    const TemporaryDirectory directory;
    const std::string file = directory.Write("file", {1});
    for (const std::string& path : {directory.Path("."), directory.Path("missing/out"), file + "/out"}) {
        ExpectToolError(ExitCode::Output, path, [&] { WriteOutput(path, {1, 2}); });
    }
    ExpectToolError(ExitCode::Output, "/dev/full", [] { WriteOutput("/dev/full", {1}); });
    EXPECT_EQ(directory.Entries(), std::set<std::string>{"file"});
}

TEST(OutputFile, InputAndOutputMustDifferHoweverTheyAreSpelt) {
    const TemporaryDirectory directory;
    const std::string file = directory.Write("file", {1});
    fs::create_symlink(file, directory.Path("link"));
    ExpectToolError(ExitCode::Usage, "another name", [&] { RequireDistinct(file, file); });
    ExpectToolError(ExitCode::Usage, "another name", [&] { RequireDistinct(file, directory.Path("./link")); });
    EXPECT_NO_THROW(RequireDistinct(file, directory.Path("other")));
    EXPECT_NO_THROW(RequireDistinct("-", "-"));
}

}  // namespace
}  // namespace kvx::tool
