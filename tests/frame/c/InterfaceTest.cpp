// The C interface gives what the C++ interface gives, and stops all errors.
#include <gtest/gtest.h>

#include <fstream>

#include "KvxFrame/KvxFrameC.h"
#include "frame/c/Records.h"
#include "frame/support/Refusals.h"
#include "frame/support/TestFrames.h"

namespace kvx::frame {
namespace {

using c::RecordOf;

constexpr uint32_t kUnknown = 0x80070002, kOutOfRange = 0x80070004, kTooSmall = 0x80070006;

TEST(CInterface, FormatsAreThoseOfCpp) {
    ASSERT_EQ(KvxFrame_FormatCount(), AllFormats().size());
    for (uint32_t index = 0; index < KvxFrame_FormatCount(); ++index) {
        KvxFrameFormat record{}, found{};
        ASSERT_EQ(KvxFrame_FormatAt(index, &record), 0u);
        const Format& format = AllFormats()[index];
        ASSERT_EQ(c::FormatOf(&record), format);
        char text[64];
        uint32_t size = 0;
        ASSERT_EQ(KvxFrame_FormatName(&record, nullptr, &size), kTooSmall);
        ASSERT_EQ(size, Name(format).size() + 1);
        uint32_t tooSmall = size - 1;
        ASSERT_EQ(KvxFrame_FormatName(&record, text, &tooSmall), kTooSmall);
        ASSERT_EQ(KvxFrame_FormatName(&record, text, &size), 0u);
        ASSERT_EQ(text, Name(format));
        ASSERT_EQ(KvxFrame_FormatByName(text, &found), 0u);
        ASSERT_EQ(c::FormatOf(&found), format);
        uint32_t count = 0, scheme = 99;
        for (size = sizeof text; KvxFrame_FormatNameAt(&record, count, &scheme, text, &size) == 0; ++count) {
            ASSERT_EQ(text, NamesOf(format)[count].name);
            ASSERT_EQ(scheme, static_cast<uint32_t>(NamesOf(format)[count].scheme));
        }
        ASSERT_EQ(count, NamesOf(format).size());
        const uint32_t codes[] = {KvxFrame_PfncCode(&record), KvxFrame_Fourcc(&record), KvxFrame_LibraryCode(&record)};
        uint32_t (*const byCode[])(uint32_t, KvxFrameFormat*) = {KvxFrame_FormatByPfncCode, KvxFrame_FormatByFourcc,
                                                                 KvxFrame_FormatByLibraryCode};
        const std::optional<uint32_t> expected[] = {PfncCode(format), Fourcc(format), LibraryCode(format)};
        for (int kind = 0; kind < 3; ++kind) {
            ASSERT_EQ(codes[kind], expected[kind].value_or(0));
            ASSERT_EQ(byCode[kind](codes[kind], &found), codes[kind] ? 0 : kUnknown);
            ASSERT_TRUE(codes[kind] == 0 || c::FormatOf(&found) == format);
        }
        ASSERT_EQ(KvxFrame_RowBytes(&record, 37), RowBytes(format, 37));
        ASSERT_EQ(KvxFrame_ImageBytes(&record, 37, 5, 0), ImageBytes(format, 37, 5, 0));
        ASSERT_EQ(KvxFrame_FilterAt(&record, 3, 2), format.family == Family::Colour ? 0 : FilterAt(format, 3, 2));
    }
}

TEST(CInterface, GeometryAndLayoutAreThoseOfCpp) {
    const TestFrame frame = MakeNoise(FormatByName("TrueSense_BGGR_WBBW_0_12"), 24, 16);
    KvxFrameSource view = RecordOf(frame.view);
    const _KvxRect region = {4, 3, 12, 10};
    ASSERT_EQ(KvxFrameSource_Crop(&view, &region), 0u);
    ASSERT_EQ(KvxFrameSource_Mirror(&view, true, false), 0u);
    ASSERT_EQ(KvxFrameSource_Flip(&view), 0u);
    const SourceView expected = FlippedVertically(Mirrored(Crop(frame.view, region), true, false));
    const SourceView found = c::ViewOf(&view);
    EXPECT_EQ(found.data, expected.data);
    EXPECT_EQ(found.stride, expected.stride);
    EXPECT_EQ(found.capacity, expected.capacity);
    EXPECT_EQ(found.format, expected.format);
    EXPECT_EQ(std::pair(found.horMirrored, found.verMirrored), std::pair(expected.horMirrored, expected.verMirrored));
    EXPECT_EQ(std::pair(found.width, found.height), std::pair(12u, 10u));

    std::vector<uint16_t> words(10 * 12);
    view = RecordOf(Crop(frame.view, region));
    const KvxFrameDestination copy{words.data(), 24, words.size() * 2, 12, 10, view.format, {}};
    ASSERT_EQ(KvxFrame_Relayout(&view, &copy, 1), 0u) << KvxFrame_LastError();
    EXPECT_EQ(words[0], frame.bytes[frame.view.stride * 3 + 8] | frame.bytes[frame.view.stride * 3 + 9] << 8);
    KvxFrameDestination picture{words.data(), 36, words.size() * 2, 12, 6, RecordOf(Format{Family::Colour}), {}};
    const _KvxRect lower = {2, 2, 10, 4};
    ASSERT_EQ(KvxFrameDestination_Crop(&picture, &lower), 0u);
    ASSERT_EQ(KvxFrameDestination_Flip(&picture), 0u);
    EXPECT_EQ(picture.data, reinterpret_cast<uint8_t*>(words.data()) + 5 * 36 + 2 * 3);
    EXPECT_EQ(picture.stride, -36);

    words[5] = 4096;
    const KvxFrameSource deep{words.data(), 24, words.size() * 2, 12, 10, RecordOf(FormatByName("BayerRG12")), 0, 0, 0};
    EXPECT_EQ(KvxFrame_CheckSampleDepth(&deep), kOutOfRange);
}

/** A converter that is deleted. */
struct CConverter {
    explicit CConverter(Family family) {
        EXPECT_EQ(KvxFrameConverter_Create(static_cast<uint32_t>(family), &pointer), 0u);
    }
    ~CConverter() {
        KvxFrameConverter_Delete(pointer);
    }
    KvxFrameConverter* pointer = nullptr;
};

std::vector<uint8_t> Convert(CConverter& converter, const TestFrame& frame) {
    std::vector<uint8_t> picture(frame.view.width * frame.view.height * 3);
    const KvxFrameSource source = RecordOf(frame.view);
    const KvxFrameDestination destination{
        picture.data(), 0, picture.size(), source.width, source.height, RecordOf(Format{Family::Colour}), {}};
    EXPECT_EQ(KvxFrameConverter_Convert(converter.pointer, &source, &destination), 0u)
        << KvxFrameConverter_LastError(converter.pointer);
    return picture;
}

std::vector<uint8_t> Expected(const TestFrame& frame, const Options& options) {
    std::vector<uint8_t> picture(frame.view.width * frame.view.height * 3);
    Convert(frame.view, {picture.data(), frame.view.width, frame.view.height, 0, picture.size(), {Family::Colour}},
            options);
    return picture;
}

/** Each setting alone has the effect of its C++ form; a camera profile gives way to what was set, also if neutral. */
TEST(CInterface, SettingsAreThoseOfCpp) {
    const std::string path = testing::TempDir() + "c_interface_camera.json";
    std::ofstream(path) << R"({"kvx_camera_profile": 1, "format": "BayerRG12", "black_level": 200, "white_level": 3000,
        "white_balance_gains": {"R": 2, "G": 1, "B": 1.5}, "colour_matrix": [1.5,-0.5,0,0,1,0,0,-0.5,1.5], "unknown": 1})";
    const auto camera = std::make_shared<CameraProfile>(ReadCameraProfile(path));
    const double black[] = {100, 110, 120, 130}, white[] = {4000, 3900, 3800, 3700}, gains[] = {2, 1, 1.5, 1};
    const double matrix[] = {2, -1, 0, 0, 1, 0, 0, -1, 2}, zeros[4] = {}, ones[] = {1, 1, 1, 1};
    const double identity[] = {1, 0, 0, 0, 1, 0, 0, 0, 1}, noise[] = {0.5, 4};
    const uint16_t table[] = {0, 50000, 65535};
    const SensorNoise sensorNoise = {{1, 1}, {0.5, 4}};
    using Setting = std::function<uint32_t(KvxFrameConverter*)>;
    const struct {
        const char* name;
        Setting set;
        std::function<void(Options&)> expect;
    } cases[] = {
        {"algorithm", [](auto* c) { return KvxFrameConverter_SetAlgorithm(c, "ipp"); },
         [](Options& o) { o.algorithm = "ipp"; }},
        {"parameter", [](auto* c) { return KvxFrameConverter_SetParameter(c, "BayerAlgType", "2"); },
         [](Options& o) { o.parameters.emplace_back("BayerAlgType", "2"); }},
        {"threads", [](auto* c) { return KvxFrameConverter_SetThreads(c, 1); }, [](Options& o) { o.threads = 1; }},
        {"noise",
         [&](auto* c) {
             return KvxFrameConverter_SetAlgorithm(c, "fine") + KvxFrameConverter_SetNoise(c, ones, noise);
         },
         [&](Options& o) { o.algorithm = "fine", o.noise = sensorNoise; }},
        {"gain",
         [](auto* c) { return KvxFrameConverter_SetAlgorithm(c, "fine") + KvxFrameConverter_SetAnalogGain(c, 20); },
         [](Options& o) { o.algorithm = "fine", o.analogGain = 20; }},
        {"defects", [](auto* c) { return KvxFrameConverter_SetDefects(c, KvxFrameDefects_Auto); },
         [](Options& o) { o.defects = Defects::Auto; }},
        {"natural", [](auto* c) { return KvxFrameConverter_SetLook(c, KvxFrameLook_Natural); },
         [](Options& o) { o.finish = Finish::Natural(); }},
        {"black", [&](auto* c) { return KvxFrameConverter_SetBlackLevel(c, black); },
         [](Options& o) { o.finish->blackLevel = Levels(100, 110, 120, 130); }},
        {"white", [&](auto* c) { return KvxFrameConverter_SetWhiteLevel(c, white); },
         [](Options& o) { o.finish->whiteLevel = Levels(4000, 3900, 3800, 3700); }},
        {"balance", [](auto* c) { return KvxFrameConverter_SetWhiteBalance(c, KvxFrameWhiteBalance_GreyWorld); },
         [](Options& o) { o.finish->whiteBalance = WhiteBalance::GreyWorld; }},
        {"gains", [&](auto* c) { return KvxFrameConverter_SetGains(c, gains); },
         [](Options& o) { o.finish->gains.red = 2, o.finish->gains.blue = 1.5; }},
        {"exposure", [](auto* c) { return KvxFrameConverter_SetExposure(c, 0.5, true); },
         [](Options& o) { o.finish->exposure = 0.5, o.finish->autoExposure = true; }},
        {"matrix", [&](auto* c) { return KvxFrameConverter_SetMatrix(c, matrix); },
         [&](Options& o) { std::copy_n(matrix, 9, o.finish->matrix.begin()); }},
        {"tone", [](auto* c) { return KvxFrameConverter_SetTone(c, KvxFrameTone_Srgb); },
         [](Options& o) { o.finish->tone = ToneCurve::Srgb; }},
        {"table", [&](auto* c) { return KvxFrameConverter_SetToneTable(c, table, 3); },
         [&](Options& o) { o.finish->tone = ToneCurve::Table, o.finish->table.assign(table, std::end(table)); }},
        {"camera", [&](auto* c) { return KvxFrameConverter_SetCamera(c, path.c_str(), 0, 0); },
         [&](Options& o) { o.camera = camera; }},
        {"above the camera",
         [&](auto* c) {
             return KvxFrameConverter_SetCamera(c, path.c_str(), 0, 0) + KvxFrameConverter_SetBlackLevel(c, zeros) +
                    KvxFrameConverter_SetWhiteLevel(c, zeros) + KvxFrameConverter_SetGains(c, ones) +
                    KvxFrameConverter_SetMatrix(c, identity);
         },
         [](Options&) {}},
    };
    const TestFrame frame = MakeFlat(FormatByName("BayerRG12"), 40, 32, {0.3, 0.2, 0.4});
    const TestFrame noisy = MakeNoise(FormatByName("BayerRG12p"), 40, 32);
    for (const auto& [name, set, expect] : cases) {
        SCOPED_TRACE(name);
        CConverter converter(Family::Bayer);
        ASSERT_EQ(KvxFrameConverter_SetLook(converter.pointer, KvxFrameLook_Linear), 0u);
        ASSERT_EQ(set(converter.pointer), 0u) << KvxFrameConverter_LastError(converter.pointer);
        Options options;
        options.finish = Finish();
        expect(options);
        for (const TestFrame* source : {&frame, &noisy})
            EXPECT_TRUE(Convert(converter, *source) == Expected(*source, options));
        if (options.camera) {
            EXPECT_EQ(KvxFrameConverter_CameraWarning(converter.pointer, 0), camera->warnings.at(0));
            EXPECT_EQ(KvxFrameConverter_CameraWarning(converter.pointer, 1), nullptr);
            EXPECT_EQ(KvxFrameConverter_SetLook(converter.pointer, KvxFrameLook_None), 0u);
            options.finish.reset();
            EXPECT_TRUE(Convert(converter, frame) == Expected(frame, options));
        }
    }
    CConverter converter(Family::Bayer);
    const KvxFrameSource source = RecordOf(frame.view);
    const _KvxRect place = {4, 4, 16, 16};
    double grey[4], read[4], exposure = 1;
    ASSERT_EQ(KvxFrameConverter_MeasureGrey(converter.pointer, &source, &place, grey), 0u);
    ASSERT_EQ(KvxFrameConverter_SetGains(converter.pointer, grey), 0u);
    Convert(converter, frame);
    ASSERT_EQ(KvxFrameConverter_LastReading(converter.pointer, read, &exposure), 0u);
    EXPECT_TRUE(std::equal(grey, grey + 4, read) && exposure == 0);
    EXPECT_NEAR(grey[0], 4.0 / 3, 0.01);
    EXPECT_NEAR(grey[1], 2, 0.01);
}

TEST(CInterface, EveryErrorIsAResultAndASentence) {
    CConverter bayer(Family::Bayer);
    KvxFrameConverter* const c = bayer.pointer;
    KvxFrameFormat format = RecordOf(FormatByName("BayerRG12"));
    const KvxFrameFormat none = {9, 12, 0, 0, 0};
    KvxFrameSource source{};
    const KvxFrameDestination destination{};
    const double numbers[9] = {1, 1, 1, 1}, gains[4] = {-1, 1, 1, 1};
    const uint16_t table[] = {0};
    char text[2];
    uint32_t size = sizeof text;
    _KvxStParam parameter;
    KvxFrameConverter* made = c;
    const struct {
        uint32_t result, expected;
        const char* part;
    } ofThread[] = {
        {KvxFrame_FormatByName(nullptr, &format), kNull, "name"},
        {KvxFrame_FormatByName("BayerRG12", nullptr), kNull, "format"},
        {KvxFrame_FormatName(&none, text, &size), kInvalid, "no such format"},
        {KvxFrame_FormatName(&format, text, nullptr), kNull, "size"},
        {KvxFrame_FormatName(&format, nullptr, &size), kNull, "buffer"},
        {KvxFrame_FormatAt(9999, &format), kUnknown, "9999"},
        {KvxFrameSource_Crop(&source, nullptr), kNull, "region"},
        {KvxFrameSource_Flip(nullptr), kNull, "source"},
        {KvxFrame_Relayout(&source, nullptr, 0), kNull, "destination"},
        {KvxFrameConverter_Create(KvxFrameFamily_Colour, &made), kInvalid, "colour"},
        {KvxFrameConverter_Create(4, &made), kOutOfRange, "family 4"},
        {KvxFrameConverter_Create(0, nullptr), kNull, "converter"},
        {KvxFrameConverter_SetThreads(nullptr, 1), kNull, "converter"},
        {KvxFrame_FormatByName("BayerRG13", &format), kUnknown, "BayerRG1"},
    };
    for (const auto& [result, expected, part] : ofThread) EXPECT_EQ(result, expected) << part;
    EXPECT_EQ(made, nullptr);
    EXPECT_NE(std::string(KvxFrame_LastError()).find("BayerRG1"), std::string::npos) << KvxFrame_LastError();
    EXPECT_EQ(KvxFrame_ImageBytes(&none, 8, 8, 0), 0u);
    EXPECT_EQ(KvxFrame_Fourcc(nullptr), 0u);
    EXPECT_STREQ(KvxFrameConverter_LastError(nullptr), "format: a null pointer");

    const std::pair<uint32_t, uint32_t> ofConverter[] = {
        {KvxFrameConverter_SetAlgorithm(c, nullptr), kNull},
        {KvxFrameConverter_SetAlgorithm(c, "best"), kUnknown},
        {KvxFrameConverter_SetParameter(c, "BayerAlgTyp", "1"), 0x80000002},
        {KvxFrameConverter_ParameterAt(c, 2, &parameter), kUnknown},
        {KvxFrameConverter_ParameterAt(c, 1, nullptr), kNull},
        {KvxFrameConverter_SetThreads(c, -1), kOutOfRange},
        {KvxFrameConverter_SetNoise(c, numbers, nullptr), kNull},
        {KvxFrameConverter_SetDefects(c, 2), kOutOfRange},
        {KvxFrameConverter_SetLook(c, 3), kOutOfRange},
        {KvxFrameConverter_SetGains(c, nullptr), kNull},
        {KvxFrameConverter_SetMatrix(c, nullptr), kNull},
        {KvxFrameConverter_SetTone(c, 2), kOutOfRange},
        {KvxFrameConverter_SetToneTable(c, table, 1), kOutOfRange},
        {KvxFrameConverter_SetToneTable(c, nullptr, SIZE_MAX), kOutOfRange},
        {KvxFrameConverter_SetToneTable(c, nullptr, 2), kNull},
        {KvxFrameConverter_Convert(c, nullptr, &destination), kNull},
        {KvxFrameConverter_Convert(c, &source, &destination), kInvalid},
        {KvxFrameConverter_SetGains(c, gains), kOutOfRange},
    };
    for (size_t i = 0; i < std::size(ofConverter); ++i) EXPECT_EQ(ofConverter[i].first, ofConverter[i].second) << i;
    EXPECT_NE(std::string(KvxFrameConverter_LastError(c)).find("a gain of -1"), std::string::npos);
    KvxFrameConverter_Delete(nullptr);

    // A refused setting changes nothing: there is still no finish. A long sentence ends between characters.
    const TestFrame frame = MakeNoise(FormatByName("BayerRG12"), 24, 16);
    EXPECT_TRUE(Convert(bayer, frame) == Expected(frame, {}));
    for (std::string path : {"/", "//"}) {
        while (path.size() < 1500) path += "\xC3\xA4";
        EXPECT_EQ(KvxFrameConverter_SetCamera(c, path.c_str(), 0, 0), kInvalid);
        const std::string cut = KvxFrameConverter_LastError(c);
        EXPECT_GE(cut.size(), 1022u);
        EXPECT_NE(cut.back(), '\xC3');
    }
}

}  // namespace
}  // namespace kvx::frame
