#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "frame/TestFrames.h"

namespace kvx::frame {
namespace {

struct Job {
    SourceView source;
    DestinationView destination;
    Options options;
};

struct Refusal {
    const char* name;
    std::function<void(Job&)> spoil;
    uint32_t result;
    const char* sentence;  ///< a part of it
};

void PrintTo(const Refusal& refusal, std::ostream* out) {
    *out << refusal.name;
}

class Refused : public testing::TestWithParam<Refusal> {};

TEST_P(Refused, WithCodeSentenceAndNothingWritten) {
    TestFrame frame = MakeNoise(FormatByName("BayerRG12"), 20, 10);
    TestPicture picture(FormatByName("RGB8"), 20, 10);
    Job job{frame.view, picture.View(), {}};
    GetParam().spoil(job);
    try {
        Convert(job.source, job.destination, job.options);
        ADD_FAILURE() << "converted";
    } catch (const Error& error) {
        EXPECT_EQ(error.Result(), GetParam().result) << error.what();
        EXPECT_NE(std::string(error.what()).find(GetParam().sentence), std::string::npos) << error.what();
    }
    EXPECT_TRUE(picture.Image().Untouched());
}

constexpr uint32_t kInvalid = 0x80070007, kNull = 0x80070008, kRange = 0x80070004, kUnknown = 0x80070002;
constexpr uint32_t kHuge = 0x80000000;

INSTANTIATE_TEST_SUITE_P(
    Jobs, Refused,
    testing::Values(
        Refusal{"NullSource", [](Job& j) { j.source.data = nullptr; }, kNull, "no data"},
        Refusal{"NullDestination", [](Job& j) { j.destination.data = nullptr; }, kNull, "no data"},
        Refusal{"ZeroWidth", [](Job& j) { j.source.width = 0; }, kInvalid, "give it a size"},
        Refusal{"HugeHeight", [](Job& j) { j.source.height = kHuge; }, kInvalid, "2^31"},
        Refusal{"HugeWidth", [](Job& j) { j.source.width = 0xFFFFFFFF; }, kInvalid, "2^31"},
        Refusal{"LowestStride", [](Job& j) { j.source.stride = std::numeric_limits<ptrdiff_t>::min(); }, kInvalid,
                "2^31"},
        Refusal{"ShortStride", [](Job& j) { j.source.stride = 39; }, kInvalid, "20 pixels of BayerRG12 take 40"},
        Refusal{"ShortNegativeStride", [](Job& j) { j.destination.stride = -59; }, kInvalid, "too short"},
        Refusal{"ShortSource", [](Job& j) { --j.source.capacity; }, kInvalid, "take 400"},
        Refusal{"ShortDestination", [](Job& j) { j.destination.capacity = 65 * 9 + 59; }, kInvalid, "too small"},
        Refusal{
            "BitsPast64",
            [](Job& j) { j.source = {j.source.data, 0x7FFFFFFF, 0x40000001, 0, 0x80000000, FormatByName("Mono8")}; },
            kInvalid, "too small"},
        Refusal{"ColourSource", [](Job& j) { j.source.format = FormatByName("RGB8"); }, kInvalid, "no source"},
        Refusal{"BrokenSource", [](Job& j) { j.source.format.bits = 11; }, kInvalid, "no source"},
        Refusal{"DeepTrueSense", [](Job& j) { j.source.format = FormatByName("SCF1WBWG16"); }, kInvalid, "8 to 14"},
        Refusal{"MonoDestination", [](Job& j) { j.destination.format = {}; }, kInvalid, "no destination"},
        Refusal{"OtherSize", [](Job& j) { j.source.height = 9; }, kInvalid, "make them equal"},
        Refusal{"MirroredBayer", [](Job& j) { j.source.horMirrored = true; }, kInvalid, "Mirrored()"},
        Refusal{"SharedMemory", [](Job& j) { j.source.data = j.destination.data; }, kInvalid, "share memory"},
        Refusal{"Threads", [](Job& j) { j.options.threads = -1; }, kRange, "OpenMP"},
        Refusal{"Algorithm", [](Job& j) { j.options.algorithm = "fast"; }, kUnknown, "bilinear, ipp, edge-aware"},
        Refusal{"AlgorithmNumber", [](Job& j) { j.options.algorithm = "99999999999999999999"; }, kUnknown, "bilinear"},
        Refusal{"ParameterName",
                [](Job& j) {
                    j.options.parameters = {{"BayerAlgTyp", "1"}};
                },
                0x80000002, "BayerAlgType"},
        Refusal{"ParameterValue",
                [](Job& j) {
                    j.options.parameters = {{"BayerAlgType", "9"}};
                },
                0x80000004, "0 to 4"},
        Refusal{"BlackLevel", [](Job& j) { j.options.finish.emplace().blackLevel = 4095; }, kInvalid, "white is 4095"},
        Refusal{"WhiteLevel", [](Job& j) { j.options.finish.emplace().whiteLevel = 4096; }, kInvalid, "ends at 4095"},
        Refusal{"Levels",
                [](Job& j) {
                    j.options.finish.emplace().whiteLevel = 100;
                    j.options.finish->blackLevel = 100;
                },
                kInvalid, "white is 100"},
        Refusal{"Gain", [](Job& j) { j.options.finish.emplace().gains.red = 0; }, kRange, "gain of 0"},
        Refusal{"NanGain", [](Job& j) { j.options.finish.emplace().gains.pan = std::nan(""); }, kRange, "gain of nan"},
        Refusal{"Matrix", [](Job& j) { j.options.finish.emplace().matrix[3] = INFINITY; }, kRange, "coefficient"},
        Refusal{"Table", [](Job& j) { j.options.finish.emplace().tone = ToneCurve::Table; }, kRange, "0 entries"}),
    [](const auto& param) { return param.param.name; });

TEST(Converters, RefuseWhatIsNotTheirs) {
    EXPECT_THROW(Converter{Family::Colour}, Error);
    Converter mono(Family::Mono);
    EXPECT_THROW(mono.SetAlgorithm("ipp"), Error);
    EXPECT_THROW(mono.SetParameter("BayerAlgType", "1"), Error);
    TestFrame frame = MakeNoise(FormatByName("BayerRG8"), 4, 4);
    TestPicture picture(FormatByName("RGB8"), 4, 4);
    EXPECT_THROW(mono.Convert(frame.view, picture.View()), Error);
    // What the component refuses arrives with the component's own code, and with names.
    Converter trueSense(Family::TrueSense);
    trueSense.SetAlgorithm("6");
    TestFrame sparse = MakeNoise(FormatByName("SCF1WBWG8"), 4, 4);
    try {
        trueSense.Convert(sparse.view, picture.View());
        ADD_FAILURE();
    } catch (const Error& error) {
        EXPECT_EQ(error.Result(), 0x80060007u);
        EXPECT_NE(std::string(error.what()).find("TrueSense_BGGR_WBBW_0_8 to RGB8 with algorithm 6"),
                  std::string::npos);
    }
    EXPECT_TRUE(picture.Image().Untouched());
}

}  // namespace
}  // namespace kvx::frame
