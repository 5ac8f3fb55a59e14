#include "tools/files/Npy.h"

#include <gtest/gtest.h>

#include "ExpectToolError.h"
#include "tools/files/RawFrame.h"

namespace kvx::tool {
namespace {

/** A file of version 1 or 2. */
Bytes File(const std::string& header, const Bytes& samples, uint8_t version = 1) {
    const std::string start = std::string("\x93NUMPY") + static_cast<char>(version) + '\0' +
                              static_cast<char>(header.size()) + std::string(version == 1 ? 1 : 3, '\0') + header;
    Bytes content(start.begin(), start.end());
    content.insert(content.end(), samples.begin(), samples.end());
    return content;
}

std::string Header(const char* type, const char* shape, const char* order = "False") {
    return fmt::format("{{'descr': {}, 'fortran_order': {}, 'shape': {}, }}\n", type, order, shape);
}

TEST(Npy, ReadsArraysThatAreFramesOrPictures) {
    const Bytes samples = {1, 2, 3, 4, 5, 6};
    const std::pair<Bytes, cv::Mat> cases[] = {
        {File(Header("'|u1'", "(2, 3)"), samples), (cv::Mat_<uint8_t>(2, 3) << 1, 2, 3, 4, 5, 6)},
        {File(Header("'<u2'", "(1, 3)"), samples, 2), (cv::Mat_<uint16_t>(1, 3) << 0x201, 0x403, 0x605)},
        {File(Header("'>u2'", "(3, 1)"), samples), (cv::Mat_<uint16_t>(3, 1) << 0x102, 0x304, 0x506)},
        {File(Header("'|u1'", "(1, 2, 3)"), samples),
         (cv::Mat_<cv::Vec3b>(1, 2) << cv::Vec3b(3, 2, 1), cv::Vec3b(6, 5, 4))},
    };
    for (const auto& [content, pixels] : cases) {
        const Picture picture = DecodeNpy(content, "f");
        ASSERT_EQ(picture.pixels.type(), pixels.type());
        EXPECT_EQ(picture.pixels.size(), pixels.size());
        EXPECT_EQ(EncodeRaw(picture.pixels), EncodeRaw(pixels));
        // What we write reads back.
        EXPECT_EQ(EncodeRaw(DecodeNpy(EncodeNpy(pixels), "f").pixels), EncodeRaw(pixels));
    }
}

TEST(Npy, WritesAlignedHeaders) {
    const Bytes content = EncodeNpy((cv::Mat_<uint16_t>(1, 2) << 0x102, 0x304));
    const std::string header = "{'descr': '<u2', 'fortran_order': False, 'shape': (1, 2), }";
    EXPECT_EQ(content, File(header + std::string(117 - header.size(), ' ') + "\n", {2, 1, 4, 3}));
}

TEST(Npy, RefusesOtherAndDamagedFiles) {
    const Bytes six(6);
    const struct {
        ExitCode code;
        const char* fragment;
        Bytes content;
    } cases[] = {
        {ExitCode::Input, "'<f8'", File(Header("'<f8'", "(2, 3)"), six)},
        {ExitCode::Input, "not (6)", File(Header("'|u1'", "(6,)"), six)},
        {ExitCode::Input, "not (1, 1, 4)", File(Header("'|u1'", "(1, 1, 4)"), six)},
        {ExitCode::Input, "column by column", File(Header("'|u1'", "(2, 3)", "True"), six)},
        {ExitCode::Input, "too short", File(Header("'<u2'", "(2, 3)"), six)},
        {ExitCode::Input, "lacks", File(Header("'|u1'", "(-2, 3)"), six)},
        {ExitCode::Frame, "f", File(Header("'|u1'", "(99999999999999999999, 3)"), six)},
        {ExitCode::Input, "ends within", {0x93, 'N', 'U', 'M', 'P', 'Y'}},
        {ExitCode::Input, "ends within", {0x93, 'N', 'U', 'M', 'P', 'Y', 2, 0, 0xFF, 0xFF, 0xFF, 0xFF}},
    };
    for (const auto& [code, fragment, content] : cases) {
        ExpectToolError(code, fragment, [&file = content] { DecodeNpy(file, "f"); });
    }
}

}  // namespace
}  // namespace kvx::tool
