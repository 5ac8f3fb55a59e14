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
#include "tools/files/TemporaryFile.h"

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
    const std::string dangling = directory.Path("dangling");
    fs::create_symlink("new.png", dangling);
    for (const std::string& to : {link, dangling}) WriteOutput(to, {4, 5});
    ::umask(old);
    EXPECT_EQ(directory.Read("old.png"), (Bytes{4, 5}));
    EXPECT_EQ(fs::status(path).permissions(), mode);
    EXPECT_TRUE(fs::is_symlink(link) && fs::is_symlink(dangling));
    EXPECT_EQ(static_cast<unsigned>(fs::status(directory.Path("new.png")).permissions()), 0644u);
    EXPECT_EQ(directory.Entries(), (std::set<std::string>{"dangling", "link", "new.png", "old.png"}));
}

TEST(OutputFile, AKilledProcessLeavesNothing) {
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
    fs::create_directory(directory.Path("sub"));
    fs::create_symlink("loop", directory.Path("loop"));
    const std::set<std::string> entries = directory.Entries();
    for (const std::string& path : {directory.Path("."), directory.Path("missing/out"), file + "/out",
                                    directory.Path("loop"), directory.Path(std::string(300, 'n'))}) {
        ExpectToolError(ExitCode::Output, path, [&] { WriteOutput(path, {1, 2}); });
    }
    for (const auto make : {TemporaryFile::WithName, TemporaryFile::WithoutName}) {
        EXPECT_FALSE(make(directory.Path("sub")).MoveTo(directory.Path("sub")));  // renaming fails
    }
    ExpectToolError(ExitCode::Output, "/dev/full", [] { WriteOutput("/dev/full", {1}); });  // not replaced by a file
    EXPECT_EQ(directory.Entries(), entries);
}

TEST(TemporaryFile, TheNextOneRemovesWhatAKilledProcessLeft) {
    const TemporaryDirectory directory;
    const fs::path target = directory.Path("a.png");
    if (const pid_t child = ::fork(); child == 0) {
        const TemporaryFile killed = TemporaryFile::WithName(target);
        ::_exit(killed.Descriptor() < 0 ? 1 : 0);
    } else {
        ::waitpid(child, nullptr, 0);
    }
    ASSERT_EQ(directory.Entries().size(), 1u);
    const TemporaryFile living = TemporaryFile::WithName(target);
    EXPECT_EQ(directory.Entries().size(), 1u);
    EXPECT_TRUE(TemporaryFile::WithName(target).MoveTo(target));  // a second one at the same time has another name
    EXPECT_EQ(directory.Entries().size(), 2u);
}

TEST(OutputFile, InputAndOutputMustDifferByAnySpelling) {
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
