#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "frame/support/Refusals.h"
#include "frame/support/TestFrames.h"

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

constexpr uint32_t kRange = 0x80070004, kUnknown = 0x80070002;
constexpr uint32_t kHuge = 0x80000000;

const Refusal kRefusals[] = {
    {"NullSource", [](Job& j) { j.source.data = nullptr; }, kNull, "no data"},
    {"NullDestination", [](Job& j) { j.destination.data = nullptr; }, kNull, "no data"},
    {"ZeroWidth", [](Job& j) { j.source.width = 0; }, kInvalid, "give it a size"},
    {"HugeHeight", [](Job& j) { j.source.height = kHuge; }, kInvalid, "2^31"},
    {"HugeWidth", [](Job& j) { j.source.width = 0xFFFFFFFF; }, kInvalid, "2^31"},
    {"LowestStride", [](Job& j) { j.source.stride = std::numeric_limits<ptrdiff_t>::min(); }, kInvalid, "2^31"},
    {"ShortStride", [](Job& j) { j.source.stride = 39; }, kInvalid, "20 pixels of BayerRG12 take 40"},
    {"ShortNegativeStride", [](Job& j) { j.destination.stride = -59; }, kInvalid, "too short"},
    {"ShortSource", [](Job& j) { --j.source.capacity; }, kInvalid, "take 400"},
    {"ShortDestination", [](Job& j) { j.destination.capacity = 65 * 9 + 59; }, kInvalid, "too small"},
    {"BitsPast64",
     [](Job& j) { j.source = {j.source.data, 0x7FFFFFFF, 0x40000001, 0, 0x80000000, FormatByName("Mono8")}; }, kInvalid,
     "too small"},
    {"ColourSource", [](Job& j) { j.source.format = FormatByName("RGB8"); }, kInvalid, "no source"},
    {"BrokenSource", [](Job& j) { j.source.format.bits = 11; }, kInvalid, "no source"},
    {"DeepTrueSense", [](Job& j) { j.source.format = FormatByName("SCF1WBWG16"); }, kInvalid, "8 to 14"},
    {"MonoDestination", [](Job& j) { j.destination.format = {}; }, kInvalid, "no destination"},
    {"OtherSize", [](Job& j) { j.source.height = 9; }, kInvalid, "make them equal"},
    {"MirroredBayer", [](Job& j) { j.source.horMirrored = true; }, kInvalid, "Mirrored()"},
    {"SharedMemory", [](Job& j) { j.source.data = j.destination.data; }, kInvalid, "share memory"},
    {"Threads", [](Job& j) { j.options.threads = -1; }, kRange, "OpenMP"},
    {"Algorithm", [](Job& j) { j.options.algorithm = "fast"; }, kUnknown, "bilinear, ipp, edge-aware"},
    {"AlgorithmNumber", [](Job& j) { j.options.algorithm = "99999999999999999999"; }, kUnknown, "bilinear"},
    {"ParameterName", [](Job& j) { j.options.parameters.emplace_back("BayerAlgTyp", "1"); }, 0x80000002,
     "BayerAlgType"},
    {"ParameterValue", [](Job& j) { j.options.parameters.emplace_back("BayerAlgType", "9"); }, 0x80000004, "0 to 4"},
    {"BlackLevel", [](Job& j) { j.options.finish.emplace().blackLevel = 4095; }, kInvalid, "white is 4095"},
    {"WhiteLevel", [](Job& j) { j.options.finish.emplace().whiteLevel = 4096; }, kInvalid, "ends at 4095"},
    {"Levels", [](Job& j) { j.options.finish.emplace().blackLevel = 100, j.options.finish->whiteLevel = 100; },
     kInvalid, "white is 100"},
    {"NanLevel", [](Job& j) { j.options.finish.emplace().blackLevel.ofFilters[2] = std::nan(""); }, kRange,
     "level of nan"},
    {"NarrowLevels",
     [](Job& j) { j.options.finish.emplace().blackLevel = 99.98, j.options.finish->whiteLevel = 99.99; }, kInvalid,
     "the same in 16 bits"},
    {"Exposure", [](Job& j) { j.options.finish.emplace().exposure = std::nan(""); }, kRange, "exposure of nan"},
    {"Gain", [](Job& j) { j.options.finish.emplace().gains.red = 0; }, kRange, "gain of 0"},
    {"NanGain", [](Job& j) { j.options.finish.emplace().gains.pan = std::nan(""); }, kRange, "gain of nan"},
    {"Matrix", [](Job& j) { j.options.finish.emplace().matrix[3] = INFINITY; }, kRange, "coefficient"},
    {"Table", [](Job& j) { j.options.finish.emplace().tone = ToneCurve::Table; }, kRange, "0 entries"},
};

TEST(Convert, RefusesWithCodeSentenceAndNothingWritten) {
    for (const Refusal& refusal : kRefusals) {
        SCOPED_TRACE(refusal.name);
        TestFrame frame = MakeNoise(FormatByName("BayerRG12"), 20, 10);
        TestPicture picture(FormatByName("RGB8"), 20, 10);
        Job job{frame.view, picture.View(), {}};
        refusal.spoil(job);
        ExpectRefused(refusal.result, refusal.sentence, [&] { Convert(job.source, job.destination, job.options); });
        EXPECT_TRUE(picture.Image().Untouched());
    }
}

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
    ExpectRefused(0x80060007, "TrueSense_BGGR_WBBW_0_8 to RGB8 with algorithm 6",
                  [&] { trueSense.Convert(sparse.view, picture.View()); });
    EXPECT_TRUE(picture.Image().Untouched());
}

}  // namespace
}  // namespace kvx::frame
