#include <gtest/gtest.h>

#include "TemporaryDirectory.h"
#include "ToolRun.h"

namespace kvx::tool {
namespace {

class UnwritableRun : public testing::Test {
protected:
    TemporaryDirectory m_directory;
    std::string m_raw = m_directory.Write("ok_64x64_BayerRG8.raw", Bytes(64 * 64, 7));
};

TEST_F(UnwritableRun, HalfWrittenFilesNeverAppear) {
    const std::string fresh = m_directory.Path("fresh.ppm");
    const std::string old = m_directory.Write("old.ppm", {1, 2, 3});
    const std::set<std::string> entries = m_directory.Entries();
    for (const std::string& path : {fresh, old}) {
        // The picture has 12 KiB: writing breaks off in its midst.
        ExpectRefusal(RunTool({"convert", m_raw, path}, {.fileSizeLimit = 8192}), 5, {path, "too large"});
    }
    EXPECT_EQ(m_directory.Entries(), entries);
    EXPECT_EQ(m_directory.Read("old.ppm"), (Bytes{1, 2, 3}));
}

TEST_F(UnwritableRun, StandardErrorChangesNothingElse) {
    const std::string picture = m_directory.Path("a.ppm");
    RunSuccessfully({"convert", m_raw, picture});
    const Bytes expected = m_directory.Read("a.ppm");
    for (const char* stream : {"/dev/full", "-"}) {
        SCOPED_TRACE(stream);
        RunSuccessfully({"convert", m_raw, picture}, {.standardErrorPath = stream});
        EXPECT_EQ(m_directory.Read("a.ppm"), expected);
        EXPECT_EQ(RunTool({"convert", m_raw, picture, "--width", "63"}, {.standardErrorPath = stream}).exitCode, 4);
    }
    // A file must not get the number of the closed stream, and with it what is printed.
    EXPECT_EQ(RunTool({"convert", m_raw, "-"}, {.standardOutputPath = "-"}).exitCode, 5);
    EXPECT_EQ(RunTool({"convert", m_raw, picture, "--json"}, {.standardOutputPath = "-"}).exitCode, 5);
    EXPECT_EQ(m_directory.Read("a.ppm"), expected);
}

TEST_F(UnwritableRun, MissingDirectoriesAndFullDevices) {
    const ToolSurroundings full{.standardOutputPath = "/dev/full"};
    ExpectRefusal(RunTool({"convert", m_raw, m_directory.Path("no/a.png")}), 5, {"no/a.png", "No such file"});
    ExpectRefusal(RunTool({"demo", m_raw + "/demo"}), 5, {"demo", "Not a directory"});
    ExpectRefusal(RunTool({"convert", m_raw, "-"}, full), 5, {"standard output", "No space"});
    EXPECT_EQ(RunTool({"convert", m_raw, m_directory.Path("a.png"), "--json"}, full).exitCode, 5);
    for (const char* command : {"formats", "params", "--help", "--version"}) {
        ExpectRefusal(RunTool({command}, full), 5, {"standard output", "No space"});
    }
}

}  // namespace
}  // namespace kvx::tool
