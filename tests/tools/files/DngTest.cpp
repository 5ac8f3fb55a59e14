#include <gtest/gtest.h>
#include <libraw/libraw.h>
#include <tiffio.h>

#include <cmath>
#include <opencv2/imgproc.hpp>

#include "ExpectToolError.h"
#include "TemporaryDirectory.h"
#include "ToolRun.h"
#include "tools/files/CameraRaw.h"
#include "tools/files/Dng.h"
#include "tools/files/Orientation.h"
#include "tools/frames/FrameConversion.h"
#include "tools/frames/FrameReader.h"
#include "tools/frames/Mosaic.h"

namespace kvx::tool {
namespace {

Sidecar Known() {
    Sidecar known;
    known.blackLevel = frame::Levels(5, 6.5, 7.25, 8);
    known.whiteLevel = 240;
    known.gains = frame::Gains{1.9, 1, 1.4, 1};
    known.matrix = {1.6, -0.4, -0.2, -0.3, 1.5, -0.2, 0.1, -0.6, 1.5};
    return known;
}

RawFrame RandomFrame(const char* format) {
    RawFrame frame = MakeRawFrame(frame::FormatByName(format), cv::Size(31, 27));
    cv::randu(frame.samples, 0, frame::White(frame.format));
    frame.samples.row(0).col(0).setTo(frame::White(frame.format));  // shows the depth
    return frame;
}

/** A DNG file in the other byte order, first the directory at 8, then long values at 512, then the samples at 1024. */
struct Tag {
    uint16_t id, type;  ///< types 1: byte, 3: short, 4: long
    std::vector<uint32_t> values;
};
Bytes BigEndianDng(const std::vector<Tag>& tags, const Bytes& samples) {
    Bytes file(1024);
    const auto put = [&file](size_t& at, uint32_t value, size_t bytes) {
        while (bytes-- > 0) file.at(at++) = static_cast<uint8_t>(value >> 8 * bytes);
    };
    size_t at = 0, outside = 512;
    put(at, 0x4D4D002A, 4), put(at, 8, 4), put(at, static_cast<uint32_t>(tags.size()), 2);
    for (const Tag& tag : tags) {
        const size_t bytes = tag.type == 1 ? 1 : tag.type == 3 ? 2 : 4, end = at + 12;
        put(at, tag.id, 2), put(at, tag.type, 2), put(at, static_cast<uint32_t>(tag.values.size()), 4);
        const bool isLong = bytes * tag.values.size() > 4;
        if (isLong) put(at, static_cast<uint32_t>(outside), 4);
        for (const uint32_t value : tag.values) put(isLong ? outside : at, value, bytes);
        at = end;
    }
    file.insert(file.end(), samples.begin(), samples.end());
    return file;
}

/** 8 bits, the first two rows and four columns masked; `changed` replaces tags. */
Bytes MaskedDng(const Bytes& samples, uint32_t width, uint32_t height, const std::vector<Tag>& changed = {}) {
    std::vector<Tag> tags = {{254, 4, {0}},
                             {256, 4, {width}},
                             {257, 4, {height}},
                             {258, 3, {8}},
                             {259, 3, {1}},
                             {262, 3, {32803}},
                             {273, 4, {1024}},
                             {274, 3, {8}},
                             {277, 3, {1}},
                             {278, 4, {height}},
                             {279, 4, {width * height}},
                             {33421, 3, {2, 2}},
                             {33422, 1, {0, 1, 1, 2}},
                             {50706, 1, {1, 4, 0, 0}},
                             {50708, 1, {'A', ' ', 'B', 0}},
                             {50714, 3, {16}},
                             {50717, 3, {200}},
                             {50829, 4, {2, 4, height, width}}};
    for (const Tag& tag : changed) {
        *std::ranges::find(tags, tag.id, &Tag::id) = tag;
    }
    return BigEndianDng(tags, samples);
}

TEST(Dng, HoldsSamplesAndFactsOfEveryBayerFrame) {
    const char* const formats[] = {"BayerRG8",  "BayerGR10", "BayerGB12", "BayerBG14",
                                   "BayerRG16", "BayerGR8",  "BayerGB10", "BayerBG12"};
    uint64_t orientation = 0;
    for (const char* name : formats) {
        SCOPED_TRACE(name);
        const RawFrame frame = RandomFrame(name);
        Sidecar known = Known();
        known.orientation = ++orientation;
        const auto read = DecodeCameraRaw(EncodeDng(frame, known, {}, "f"), "f.dng", "f");
        ASSERT_TRUE(read);
        EXPECT_EQ(frame::Name(read->frame.format), name);
        EXPECT_EQ(EncodeRaw(read->frame.samples), EncodeRaw(frame.samples));
        EXPECT_EQ(read->known.blackLevel, known.blackLevel);
        EXPECT_EQ(read->known.whiteLevel, known.whiteLevel);
        EXPECT_EQ(read->known.orientation, orientation);
        EXPECT_NEAR(read->known.gains.value().red, 1.9, 1e-4);
        EXPECT_NEAR(read->known.gains.value().blue, 1.4, 1e-4);
        EXPECT_LT(cv::norm(cv::Matx33d(read->known.matrix.value().data()), cv::Matx33d(known.matrix->data())), 1e-3);
    }
}

TEST(Dng, OtherReadersGetTheColoursOfOurPicture) {
    cv::Mat patches = (cv::Mat_<cv::Vec3w>(1, 4) << cv::Vec3w(16000, 16000, 16000), cv::Vec3w(6000, 9000, 16000),
                       cv::Vec3w(9000, 13000, 3000), cv::Vec3w(16000, 8000, 6000));
    cv::resize(patches, patches, {256, 64}, 0, 0, cv::INTER_NEAREST);
    const RawFrame frame = MakeMosaic({patches, 65535}, frame::FormatByName("BayerGB12"), {.blackLevel = 256});
    Sidecar known = Known();
    known.blackLevel = 256, known.whiteLevel = 4095;
    for (const double row : {1.0, 0.8}) {  // the second matrix does not keep white
        (*known.matrix)[0] *= row;
        frame::Finish finish;
        finish.blackLevel = 256, finish.gains = *known.gains, finish.matrix = *known.matrix;
        frame::Converter converter(frame::Family::Bayer);
        converter.SetFinish(finish);
        const cv::Mat own = ConvertFrame(converter, ViewOf(frame), frame::FormatByName("RGB16"), "f").pixels;
        Bytes content = EncodeDng(frame, known, {}, "f");
        const auto raw = std::make_unique<LibRaw>();
        auto& params = raw->imgdata.params;
        params.output_bps = 16, params.gamm[0] = params.gamm[1] = 1, params.no_auto_bright = 1;
        params.use_camera_wb = 1, params.adjust_maximum_thr = 0;
        ASSERT_EQ(raw->open_buffer(content.data(), content.size()), 0);
        ASSERT_EQ(raw->unpack() | raw->dcraw_process(), 0);
        // LibRaw leaves BaselineExposure to its caller.
        const double brightening = std::exp2(raw->imgdata.color.dng_levels.baseline_exposure);
        for (int patch = 0; patch < 4; ++patch) {
            const auto* pixel = raw->imgdata.image[32 * 256 + 64 * patch + 32];
            for (int channel = 0; channel < 3; ++channel) {
                EXPECT_NEAR(pixel[channel] * brightening, own.at<cv::Vec3w>(32, 64 * patch + 32)[2 - channel],
                            65535 * 0.002);
            }
        }
    }
}

TEST(CameraRaw, FilesOfOtherWritersLoseTheirMaskedBorder) {
    Bytes samples(40 * 30);
    for (size_t index = 0; index < samples.size(); ++index) samples[index] = static_cast<uint8_t>(index % 201);
    const auto read = DecodeCameraRaw(MaskedDng(samples, 40, 30), "f.dng", "f");
    ASSERT_TRUE(read);
    EXPECT_EQ(frame::Name(read->frame.format), "BayerRG8");
    const cv::Mat all(30, 40, CV_8UC1, samples.data());
    EXPECT_EQ(EncodeRaw(read->frame.samples), EncodeRaw(all(cv::Rect(4, 2, 36, 28))));
    EXPECT_EQ(read->known.blackLevel, frame::Levels(16));
    EXPECT_EQ(read->known.whiteLevel, frame::Levels(200));
    EXPECT_EQ(read->known.orientation, 8u);
    EXPECT_FALSE(read->known.gains);
    EXPECT_FALSE(read->known.matrix);
}

TEST(CameraRaw, OtherAndDamagedFilesAreRefused) {
    const Bytes samples(40 * 30, 9);
    const auto read = [](const Bytes& content) { return DecodeCameraRaw(content, "f.dng", "f.dng"); };
    std::vector<uint32_t> xtrans;
    for (const char filter : std::string("GBGGRGRGRBGBGBGGRGGRGGBGBGBRGRGRGGBG")) {
        xtrans.push_back(filter == 'R' ? 0 : filter == 'G' ? 1 : 2);
    }
    const struct {
        ExitCode code;
        const char* fragment;
        Bytes content;
    } cases[] = {
        {ExitCode::Input, "A B has no mosaic", MaskedDng(samples, 40, 30, {{262, 3, {34892}}})},
        {ExitCode::Input, "X-Trans", MaskedDng(samples, 40, 30, {{33421, 3, {6, 6}}, {33422, 1, xtrans}})},
        {ExitCode::Input, "is damaged", MaskedDng(Bytes(39 * 30), 40, 30)},
        {ExitCode::Frame, "no sensor is that large", MaskedDng(samples, 60000, 60000)},
    };
    for (const auto& [code, fragment, content] : cases) {
        ExpectToolError(code, fragment, [&, &file = content] { read(file); });
    }
    // Whatever a byte of the directory says, the answer is a frame, an error, or that the file is something else.
    const Bytes good = MaskedDng(samples, 40, 30);
    for (size_t at = 0; at < 700; ++at) {
        for (const int value : {0x00, 0x7F, 0xFF}) {
            Bytes bad = good;
            bad[at] = static_cast<uint8_t>(value);
            try {
                read(bad);
            } catch (const ToolError& error) {
                EXPECT_NE(error.Code(), ExitCode::Unexpected) << error.what();
            }
        }
    }
    const Bytes cut(good.begin(), good.begin() + 100);
    ExpectToolError(ExitCode::Input, "is damaged", [&] { read(cut); });
    EXPECT_FALSE(DecodeCameraRaw(cut, "f.tif", "f.tif"));
}

TEST(Orientation, TurnsAsExifHasIt) {
    const std::vector<std::vector<int>> upright = {{1, 2, 3, 4, 5, 6}, {3, 2, 1, 6, 5, 4}, {6, 5, 4, 3, 2, 1},
                                                   {4, 5, 6, 1, 2, 3}, {1, 4, 2, 5, 3, 6}, {4, 1, 5, 2, 6, 3},
                                                   {6, 3, 5, 2, 4, 1}, {3, 6, 2, 5, 1, 4}};
    for (uint64_t orientation = 1; orientation <= 8; ++orientation) {
        cv::Mat picture = (cv::Mat_<int>(2, 3) << 1, 2, 3, 4, 5, 6);
        MakeUpright(picture, orientation);
        EXPECT_EQ(picture.rows, orientation < 5 ? 2 : 3);
        EXPECT_EQ(std::vector<int>(picture.begin<int>(), picture.end<int>()), upright[orientation - 1]) << orientation;
    }
}

TEST(DngRun, FrontEndsWriteAndReadThem) {
    const TemporaryDirectory directory;
    const std::string raw = directory.Write("a_31x27_BayerGB12.raw", EncodeRaw(RandomFrame("BayerGB12").samples));
    directory.WriteText("a_31x27_BayerGB12.json",
                        R"({"black_level": 64, "white_balance_gains": {"R": 1.9, "G": 1, "B": 1.4}})");
    const std::string dng = directory.Path("a.dng");
    EXPECT_NE(RunSuccessfully({"convert", raw, dng}).standardError.find("no colour matrix known"), std::string::npos);
    EXPECT_EQ(RunSuccessfully({"pack", raw, "-", "--to", "dng"}).standardOutput, directory.Read("a.dng"));
    RunSuccessfully({"unpack", dng, directory.Path("b.raw")});
    EXPECT_EQ(directory.Read("b.raw"), directory.Read("a_31x27_BayerGB12.raw"));
    EXPECT_EQ(RunSuccessfully({"convert", dng, "-"}).standardOutput,
              RunSuccessfully({"convert", raw, "-"}).standardOutput);
    RunSuccessfully({"convert", raw, dng, "--crop", "1,1,30,26", "--white-balance", "grey-world", "--no-sidecar"});
    const FrameInput cropped = ReadFrame(dng, {});
    EXPECT_EQ(frame::Name(cropped.frame.format), "BayerGR12");
    EXPECT_EQ(cropped.frame.samples.size(), cv::Size(30, 26));
    const std::string camera = directory.WriteText(
        "camera.json", R"({"kvx_camera_profile": 1, "black_level": 63, "noise": {"slope": 0.5, "intercept": 8},
        "format": "BayerGB12", "width": 31, "height": 27, "hot_pixels": [[3, 4]]})");
    const std::string noisy = directory.Path("noisy.dng");
    EXPECT_NE(RunSuccessfully({"convert", raw, noisy, "--no-sidecar", "--camera", camera})
                  .standardError.find("defects and fixed pattern of the camera stay"),
              std::string::npos);
    TIFFSetWarningHandler(nullptr);  // libtiff does not know the tag
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFOpen(noisy.c_str(), "r"), TIFFClose);
    int count = 0;
    const double* profile = nullptr;
    ASSERT_EQ(TIFFGetField(tiff.get(), 51041, &count, &profile), 1);  // NoiseProfile, from black 63 to white 4095
    EXPECT_EQ(std::vector<double>(profile, profile + count), (std::vector{0.5 / 4032, 8.0 / (4032 * 4032)}));
    // A sidecar overrides parts of the file.
    directory.WriteText("a.dng.json", R"({"orientation": 6, "black_level": 60, "width": 7})");
    RunSuccessfully({"convert", dng, directory.Path("a.ppm")});
    const Bytes ppm = directory.Read("a.ppm");
    EXPECT_EQ(std::string(ppm.begin(), ppm.begin() + 8), "P6\n26 30");
    const std::string info = TextOf({"info", dng});
    EXPECT_NE(info.find("60 (from the sidecar)"), std::string::npos);
    EXPECT_NE(info.find("4095 (from the file)"), std::string::npos);

    const std::string dense = directory.Write("t_32x32_TrueSense_BGGR_WBBW_0_12.raw", Bytes(2048));
    const std::vector<std::pair<const char*, std::vector<std::string>>> refused = {
        {"camera raw file", {"convert", dng, directory.Path("b.png"), "--format", "BayerRG8"}},
        {"leave out", {"convert", raw, dng, "--look", "natural"}},
        {"colour matrix", {"convert", raw, dng, "--matrix", "1,0,0,1,0,0,0,0,1"}},
        {"Bayer mosaics", {"convert", dense, dng}},
        {"cannot hold", {"pack", raw, dng, "--layout", "pfnc"}},
        {"--layout", {"pack", raw, directory.Path("c.raw")}}};
    for (const auto& [fragment, arguments] : refused) {
        ExpectRefusal(RunTool(arguments), 2, {fragment});
    }
}

}  // namespace
}  // namespace kvx::tool
