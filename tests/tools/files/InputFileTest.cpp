#include "tools/files/InputFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <thread>

#include "ExpectToolError.h"
#include "TemporaryDirectory.h"

namespace kvx::tool {
namespace {

/** Every byte depends on its position. */
Bytes LongContent() {
    Bytes content(5'000'001);
    for (size_t index = 0; index < content.size(); ++index) {
        content[index] = static_cast<uint8_t>(index % 251);
    }
    return content;
}

TEST(InputFile, ReadsFilesAndStreamsOfAnyLength) {
    const TemporaryDirectory directory;
    EXPECT_EQ(ReadInput(directory.Write("empty", {})), Bytes());
    EXPECT_TRUE(ReadInput(directory.Write("long", LongContent())) == LongContent());

    // A pipe has no size and delivers its content in pieces.
    ASSERT_EQ(::mkfifo(directory.Path("pipe").c_str(), 0600), 0);
    std::thread writer([&directory] { directory.Write("pipe", LongContent()); });
    const Bytes received = ReadInput(directory.Path("pipe"));
    writer.join();
    EXPECT_TRUE(received == LongContent());
}

TEST(InputFile, ReadsParts) {
    const TemporaryDirectory directory;
    InputFile onDisk(directory.Write("five", {1, 2, 3, 4, 5})), inMemory(Bytes{1, 2, 3, 4, 5});
    RequireRegular(directory.Path("five"));
    for (const char* stream : {"-", "/dev/zero", "/"})
        ExpectToolError(ExitCode::Input, "is no regular file", [stream] { RequireRegular(stream); });
    EXPECT_FALSE(InputFile("/proc/self/maps").Whole().empty());  // says that it is empty
    for (InputFile* file : {&onDisk, &inMemory}) {
        EXPECT_EQ(file->Part(1, 2), (Bytes{2, 3}));
        EXPECT_EQ(file->Part(3, UINT64_MAX), (Bytes{4, 5}));
        EXPECT_EQ(file->Part(UINT64_MAX, 1), Bytes());
        EXPECT_EQ(file->Whole(), (Bytes{1, 2, 3, 4, 5}));
    }
    InputFile shrinking(directory.Path("five"));
    std::filesystem::resize_file(directory.Path("five"), 3);
    ExpectToolError(ExitCode::Input, "has become shorter", [&] { shrinking.Whole(); });
}

TEST(InputFile, FailuresNameTheFile) {
    const TemporaryDirectory directory;
    constexpr InputLimit kLimit{3, ExitCode::Frame, "cut it"};
    EXPECT_EQ(ReadInput(directory.Write("three", {1, 2, 3}), kLimit).size(), 3u);
    for (const std::string& path : {directory.Write("four", {1, 2, 3, 4}), std::string("/dev/zero")}) {
        ExpectToolError(ExitCode::Frame, path + ": holds more than 3 bytes; cut it", [&] { ReadInput(path, kLimit); });
    }
    for (const std::string& path : {directory.Path("missing"), directory.Path("."), std::string()}) {
        ExpectToolError(ExitCode::Input, path + ": cannot be read", [&path] { ReadInput(path); });
    }
}

}  // namespace
}  // namespace kvx::tool
