#include "tools/files/RawLayout.h"

#include <gtest/gtest.h>

#include <climits>
#include <numeric>

#include "ExpectToolError.h"
#include "tools/frames/Formats.h"

namespace kvx::tool {
namespace {

Bytes CountingBytes(size_t count) {
    Bytes bytes(count);
    std::iota(bytes.begin(), bytes.end(), uint8_t{0});
    return bytes;
}

RawLayout Layout(const char* format, uint64_t width, uint64_t height, std::optional<uint64_t> stride,
                 uint64_t skipBytes = 0) {
    return {RequireFormat(format), width, height, stride, skipBytes};
}

TEST(RawLayout, SkipsHeaderAndPadding) {
    const RawLayout bytes = Layout("BayerRG8", 3, 2, 5, 4);
    for (const size_t size : {4u + 5 + 3, 4u + 2 * 5}) {  // without and with the last padding
        const RawFrame frame = CutFrame(InputFile(CountingBytes(size)), bytes, "f");
        EXPECT_EQ(EncodeRaw(frame.samples), (Bytes{4, 5, 6, 9, 10, 11}));
    }
    // Odd offsets must not matter for words.
    const RawFrame words = CutFrame(InputFile(CountingBytes(3 + 7 + 4)), Layout("BayerRG16", 2, 2, 7, 3), "f");
    EXPECT_EQ(words.samples.at<uint16_t>(0, 0), 0x0403);
    EXPECT_EQ(words.samples.at<uint16_t>(1, 1), 0x0D0C);
}

TEST(RawLayout, SizeDecidesWhetherPackedRowsStartWithAByte) {
    // Three samples of 12 bits take four and a half bytes.
    const Bytes dense = {0x01, 0x20, 0x00, 0x03, 0x40, 0x00, 0x05, 0x60, 0x00};
    const Bytes aligned = {0x01, 0x20, 0x00, 0x03, 0x00, 0x04, 0x50, 0x00, 0x06, 0x00};
    for (const Bytes& content : {dense, aligned}) {
        const RawFrame frame = CutFrame(InputFile(content), Layout("BayerRG12p", 3, 2, {}), "f");
        EXPECT_EQ(frame.format, RequireFormat("BayerRG12"));
        EXPECT_EQ(EncodeRaw(frame.samples), (Bytes{1, 0, 2, 0, 3, 0, 4, 0, 5, 0, 6, 0})) << content.size();
    }
}

TEST(RawLayout, ReadsLongFilesInParts) {
    const RawLayout words = Layout("BayerRG16", 1000, 2000, 2003, 5);  // four parts, the last one shorter
    const Bytes content = CountingBytes(5 + 2003 * 2000);
    const RawFrame frame = CutFrame(InputFile(content), words, "f");
    const RawFrame second = CutFrame(InputFile(content), Layout("BayerRG16", 1000, 1000, 2003, 5), 1);
    for (const uint64_t row : {0u, 522u, 523u, 1047u, 1998u, 1999u}) {
        const uint64_t place = 5 + row * 2003 + 2 * 999;
        EXPECT_EQ(frame.samples.at<uint16_t>(static_cast<int>(row), 999), content[place] | content[place + 1] << 8);
    }
    EXPECT_EQ(cv::norm(second.samples, frame.samples.rowRange(1000, 2000), cv::NORM_INF), 0);
}

TEST(RawLayout, ErrorsSuggestTheFix) {
    struct Case {
        size_t size;
        RawLayout layout;
        const char* fragment;
    };
    const std::vector<Case> cases = {
        {11, Layout("BayerRG8", 3, 4, 3), "holds 11 bytes, but 3x4 pixels of BayerRG8 with 3 bytes per row need 12"},
        {9, Layout("BayerRG8", 3, 4, 3), "try --height 3 (fewer rows)"},
        {12, Layout("BayerRG12", 3, 4, 6), "the size is that of BayerRG8"},
        {24, Layout("BayerRG8", 3, 4, 3), "the size is that of BayerRG10"},
        {12, Layout("BayerRG12", 4, 2, {}), "the size is that of BayerRG12p"},
        {13, Layout("BayerRG12p", 3, 2, {}), "with 5 bytes per row need 10"},
        {0, Layout("BayerRG8", 3, 4, 3), "holds 0 bytes"},
        {13, Layout("BayerRG8", 3, 4, 3), "--skip-bytes 1"},
        {20, Layout("BayerRG8", 3, 4, 3, 5),
         "after 5 bytes need 17: try --skip-bytes 8 (a header), or --height 5 (more rows)"},
        {16, Layout("BayerRG8", 3, 4, 3), "--stride 4 (padded rows)"},
        {12, Layout("BayerRG8", 3, 4, 4), "its rows have no padding: leave out --stride"},
        {9, Layout("BayerRG12p", 3, 2, 8), "its rows have no padding: leave out --stride"},
        {20, Layout("BayerRG8", 3, 4, 8), "need 27: try --stride 5 (padded rows)"},
        {19, Layout("BayerRG8", 3, 4, 5), "--skip-bytes 1"},
        {4, Layout("BayerRG8", 3, 4, 3, 5), "fewer than --skip-bytes 5"},
        {13, Layout("BayerRG8", 3, 4, 2),
         "--stride 2 does not fit: a row of 3 BayerRG8 pixels takes 3 bytes; try --stride 3"},
        {20, Layout("BayerRG16", 3, 2, 5), "try --stride 10"},
        {12, Layout("BayerRG8", 3, 4, UINT64_MAX), "--stride 18446744073709551615 does not fit"},
        {12, Layout("BayerRG8", 0, 4, 3), "0x4 pixels are not a frame"},
        {12, Layout("BayerRG8", 3, 0, 3), "3x0 pixels are not a frame"},
        {12, Layout("BayerRG8", 1, UINT64_MAX, 3), "are too many"},
        {12, Layout("BayerRG8", UINT64_MAX, 1, 3), "are too many"},
        {12, Layout("BayerRG8", 65536, 32768, 65536), "are too many"},
        {12, Layout("BayerRG8", INT_MAX / 6 + 1, 1, INT_MAX / 6 + 1), "are too many"},
    };
    for (const Case& wrong : cases) {
        ExpectToolError(ExitCode::Frame, wrong.fragment,
                        [&] { CutFrame(InputFile(Bytes(wrong.size)), wrong.layout, "f"); });
    }
}

}  // namespace
}  // namespace kvx::tool
