#include "tools/files/Pnm.h"

#include <gtest/gtest.h>

#include <string_view>

#include "ExpectToolError.h"
#include "tools/files/RawFrame.h"

namespace kvx::tool {
namespace {

using namespace std::string_view_literals;

Bytes BytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

Picture Decode(std::string_view text) {
    const Bytes content = BytesOf(text);
    return DecodePnm(content, ParsePnmHeader(content).value(), "f.pgm");
}

TEST(Pnm, ReadsSamplesUnscaled) {
    struct Case {
        std::string_view text;
        uint32_t maximum;
        cv::Mat pixels;  // red last
    };
    const std::vector<Case> cases = {
        {"P5 2 1 255\n\x01\xFF"sv, 255, (cv::Mat_<uint8_t>(1, 2) << 1, 255)},
        {"P5\n# by a camera\n2\t1 # size\n100\n\x01\x64"sv, 100, (cv::Mat_<uint8_t>(1, 2) << 1, 100)},
        {"P5\n2 1\n16383\n\x3F\xFF\x00\x0A"sv, 16383, (cv::Mat_<uint16_t>(1, 2) << 16383, 10)},
        {"P5 1 1 255\n\n and more"sv, 255, (cv::Mat_<uint8_t>(1, 1) << 10)},
        {"P2\n2 1\n1023\n0 1023"sv, 1023, (cv::Mat_<uint16_t>(1, 2) << 0, 1023)},
        {"P2 2 1 9 4\n#x\n5\n"sv, 9, (cv::Mat_<uint8_t>(1, 2) << 4, 5)},
        {"P3 1 1 9 1 2 3"sv, 9, cv::Mat(1, 1, CV_8UC3, cv::Scalar(3, 2, 1))},
        {"P6 1 1 256\n\x00\x01\x01\x00\x00\x02"sv, 256, cv::Mat(1, 1, CV_16UC3, cv::Scalar(2, 256, 1))},
    };
    for (const Case& expected : cases) {
        const Picture picture = Decode(expected.text);
        EXPECT_EQ(picture.maximum, expected.maximum) << expected.text;
        ASSERT_EQ(picture.pixels.type(), expected.pixels.type()) << expected.text;
        EXPECT_EQ(EncodeRaw(picture.pixels), EncodeRaw(expected.pixels)) << expected.text;
    }
}

TEST(Pnm, RefusesOtherAndDamagedFiles) {
    for (const std::string_view text :
         {""sv, "P"sv, "P5"sv, "P\0 1 1 255\n."sv, "P7 1 1 255\n."sv, "P51 1 255\n."sv, "P5 1 1\n"sv, "P5 1 1 0\n."sv,
          "P5 1 1 65536\n..."sv, "P5 -1 1 255\n."sv, "P5 1 1 255"sv, "P5 1 1 255."sv, "P5 1x1 255\n."sv,
          "P5 99999999999999999999 1 255\n."sv, "P5 # 1 1 255"sv}) {
        EXPECT_FALSE(ParsePnmHeader(BytesOf(text))) << text;
    }
    for (const std::string_view text :
         {"P5 2 2 255\n..."sv, "P5 2 2 256\n\0\0\0\0\0\0\0"sv, "P6 1 1 255\n.."sv, "P2 2 1 255\n100 "sv,
          "P2 2 1 255\n100 x 3"sv, "P5 1 1 9\n\x0A"sv, "P2 1 1 9\n10"sv, "P5 40000 40000 255\n."sv}) {
        ExpectToolError(ExitCode::Input, "f.pgm", [text] { Decode(text); });
    }
    for (const std::string_view text : {"P5 70000 70000 255\n."sv, "P5 0 5 255\n."sv}) {
        ExpectToolError(ExitCode::Frame, "f.pgm", [text] { Decode(text); });
    }
}

TEST(Pnm, WritesBinaryFiles) {
    EXPECT_EQ(EncodePnm({(cv::Mat_<uint16_t>(1, 2) << 0x3FFE, 1), 16383}), BytesOf("P5\n2 1\n16383\n\x3F\xFE\0\x01"sv));
    EXPECT_EQ(EncodePnm({cv::Mat(1, 1, CV_8UC3, cv::Scalar(3, 2, 1)), 255}), BytesOf("P6\n1 1\n255\n\x01\x02\x03"sv));
}

}  // namespace
}  // namespace kvx::tool
