// Every misuse has its code and leaves the destination unchanged.
#include <gtest/gtest.h>

#include <climits>
#include <functional>

#include "support/BayerFrames.h"
#include "support/BayerFunctions.h"

namespace kvx::test {
namespace {

constexpr uint32_t kInvalid = 0x80050007;
constexpr uint32_t kNoPixels = 0x80050001;

/** A frame of 8 x 6 pixels and the buffer for its picture; each case changes one thing. */
struct Frame {
    GuardedImage src, dst;
    Frame(const BayerDepth& from, uint32_t dstType, size_t dstSampleSize)
        : src(MakeSource(from.patterns[1], from.depth, 8, 6, 0, MakeSamples(Fill::Noise, 8, 6, from.depth, 1))),
          dst(dstType, 8, 6, 24 * dstSampleSize, 24 * dstSampleSize) {}
};

struct GeometryCase {
    const char* what;
    std::function<void(Frame&)> spoil;
    uint32_t code;
    uint32_t reducingCode = code;  // of the component, from words to bytes
};

const GeometryCase kGeometryCases[] = {
    {"null source data", [](Frame& f) { f.src.Record().data = nullptr; }, kInvalid},
    {"null destination data", [](Frame& f) { f.dst.Record().data = nullptr; }, kInvalid},
    {"destination narrower", [](Frame& f) { f.dst.Record().width = 7; }, kInvalid, 0},
    {"destination wider", [](Frame& f) { f.dst.Record().width = 9; }, kInvalid, 0},
    {"destination higher", [](Frame& f) { f.dst.Record().height = 7; }, kInvalid, 0},
    {"destination lower", [](Frame& f) { f.dst.Record().height = 5; }, kInvalid, 0},
    {"destination without a size", [](Frame& f) { f.dst.Record().width = f.dst.Record().height = 0; }, kInvalid, 0},
    {"source step a byte short", [](Frame& f) { --f.src.Record().lineStep; }, kInvalid},
    {"destination step a byte short", [](Frame& f) { --f.dst.Record().lineStep; }, kInvalid},
    {"zero steps", [](Frame& f) { f.src.Record().lineStep = f.dst.Record().lineStep = 0; }, kInvalid},
    {"negative source step", [](Frame& f) { f.src.Record().lineStep = static_cast<uint32_t>(-16); }, kInvalid},
    {"negative destination step", [](Frame& f) { f.dst.Record().lineStep = static_cast<uint32_t>(-48); }, kInvalid},
    {"width past INT_MAX", [](Frame& f) { f.src.Record().width = f.dst.Record().width = 0x80000008; }, kInvalid},
    {"height past INT_MAX", [](Frame& f) { f.src.Record().height = f.dst.Record().height = 0x80000006; }, kInvalid},
    {"width whose row overflows 32 bits",
     [](Frame& f) {
         f.src.Record().width = f.dst.Record().width = 0x55555556;
         f.src.Record().lineStep = f.dst.Record().lineStep = INT_MAX;
     },
     kInvalid},
    {"no columns", [](Frame& f) { f.src.Record().width = f.dst.Record().width = 0; }, kNoPixels},
    {"no rows", [](Frame& f) { f.src.Record().height = f.dst.Record().height = 0; }, kNoPixels},
};

TEST(BayerRefusal, GeometryThatDoesNotFit) {
    struct Route {
        BayerDepth from;
        uint32_t dstType;
        size_t dstSampleSize;
    };
    for (const Route& route : {Route{kBayerDepths[0], KvxFormat_RGB8, 1}, Route{kBayerDepths[2], KvxFormat_RGB12, 2},
                               Route{kBayerDepths[2], KvxFormat_BGR8, 1}})
        for (const GeometryCase& c : kGeometryCases)
            for (const int algorithm : {0, 1, 2}) {
                SCOPED_TRACE(testing::Message() << c.what << ", " << route.from.depth << " bits to 0x" << std::hex
                                                << route.dstType << ", algorithm " << algorithm);
                Frame frame(route.from, route.dstType, route.dstSampleSize);
                c.spoil(frame);
                const bool reduces = route.from.depth != 8 && route.dstSampleSize == 1;
                EXPECT_EQ(BayerToColor(&frame.src.Record(), &frame.dst.Record(), algorithm), c.code);
                for (const int channels : {3, 4})
                    EXPECT_EQ(CallFlat(route.from.depth, route.dstSampleSize == 1 ? 8 : route.from.depth, false,
                                       channels, frame.src, frame.dst, 1, algorithm),
                              c.code);
                EXPECT_TRUE(frame.dst.Untouched());
                if (reduces && algorithm != 0) continue;  // the component reduces by the bilinear algorithm only
                const uint32_t code = reduces ? c.reducingCode : c.code;
                EXPECT_EQ(CallComponent(frame.src, frame.dst, algorithm), code);
                EXPECT_EQ(frame.dst.Untouched(), code != 0);
            }
}

TEST(BayerRefusal, FormatsThatHaveNoConversion) {
    struct FormatCase {
        uint32_t src, dst;
        uint32_t component, records;
    };
    constexpr FormatCase cases[] = {
        {KvxFormat_BayerGR10p, KvxFormat_RGB10, 1, kInvalid},  // packings differ
        {KvxFormat_BayerRG12Packed, KvxFormat_RGB12, 1, kInvalid},
        {KvxFormat_BayerGR10p, KvxFormat_Mono10p, kInvalid, kInvalid},  // packings agree, but nothing unpacks
        {KvxFormat_Mono8, KvxFormat_RGB8, kInvalid, kInvalid},
        {KvxFormat_RGB8, KvxFormat_RGB8, kInvalid, kInvalid},
        {KvxFormat_TrueSense_BGGR_WBBW_0_12, KvxFormat_RGB12, kInvalid, kInvalid},
        {0, KvxFormat_RGB8, 1, kInvalid},
        {0x03080199, KvxFormat_RGB8, kInvalid, kInvalid},  // Bayer bits, but no row of the table
        {KvxFormat_BayerRG12, KvxFormat_Mono8, 1, 0},
        {KvxFormat_BayerRG12, KvxFormat_RGBa8, 1, 0},
        {KvxFormat_BayerRG12, KvxFormat_RGB16, 1, 0},
        {KvxFormat_BayerRG14, KvxFormat_RGB8, 1, 0},
        {KvxFormat_BayerRG8, KvxFormat_RGB12, 1, 0},
    };
    KvxBayer* component = KvxBayer_CreateComponent();
    for (const FormatCase& c : cases) {
        SCOPED_TRACE(testing::Message() << std::hex << c.src << " to " << c.dst);
        Frame frame(kBayerDepths[4], c.dst, 2);
        frame.src.Record().pixelType = c.src;
        EXPECT_EQ(KvxBayer_ConvertImage(component, &frame.src.Record(), &frame.dst.Record()), c.component);
        EXPECT_TRUE(frame.dst.Untouched());
        EXPECT_EQ(BayerToColor(&frame.src.Record(), &frame.dst.Record(), 0), c.records);
        EXPECT_EQ(frame.dst.Untouched(), c.records != 0);
        if (c.records != 0 && c.component != 1) {
            EXPECT_EQ(KvxBayer_AllocData(component, &frame.src.Record(), &frame.dst.Record()), kInvalid);
        }
    }
    KvxBayer_DeleteComponent(component);
}

TEST(BayerRefusal, PatternsDepthsAndAlgorithmsOfTheFlatFunctions) {
    // Results of the 8u functions, and of the 16u and 16u8u ones.
    const auto check = [](uint32_t depth, int pattern, int algorithm, uint32_t bytes, uint32_t words) {
        for (const bool blueFirst : {false, true})
            for (const int channels : {3, 4})
                for (const auto& [srcDepth, dstDepth] : {std::pair{8, 8}, {12, 12}, {12, 8}}) {
                    SCOPED_TRACE(testing::Message() << "depth " << depth << ", pattern " << pattern << ", algorithm "
                                                    << algorithm << ", channels " << channels);
                    Frame frame(kBayerDepths[srcDepth == 8 ? 0 : 2], 0, 2);
                    frame.src.Record().pixelDepth = depth;
                    const uint32_t expected = srcDepth == 8 ? bytes : words;
                    EXPECT_EQ(
                        CallFlat(srcDepth, dstDepth, blueFirst, channels, frame.src, frame.dst, pattern, algorithm),
                        expected);
                    const bool converts = expected == 0 && (algorithm == 0 || algorithm == 1);
                    EXPECT_EQ(frame.dst.Untouched(), !converts);
                }
    };
    for (const int pattern : {4, 255}) check(12, pattern, 0, kInvalid, kInvalid);
    for (const int algorithm : {1, 3, 4, -1}) check(12, 1, algorithm, 0, 0);
    for (const uint32_t depth : {11u, 13u, 8u, 0u, 0xFFFFFFF4u})
        for (const int algorithm : {0, 1, 3}) check(depth, 1, algorithm, 0, kInvalid);
}

TEST(BayerRefusal, NullRecordsAndComponents) {
    KvxBayer* component = KvxBayer_CreateComponent();
    Frame frame(kBayerDepths[0], KvxFormat_RGB8, 1);
    _KvxImage* src = &frame.src.Record();
    _KvxImage* dst = &frame.dst.Record();
    EXPECT_EQ(KvxBayer_ConvertImage(nullptr, src, dst), kInvalid);
    EXPECT_EQ(KvxBayer_ConvertImage(component, nullptr, dst), 7u);  // bare
    EXPECT_EQ(KvxBayer_ConvertImage(component, src, nullptr), 7u);
    EXPECT_EQ(component->ConvertImage(nullptr, dst), kInvalid);
    EXPECT_EQ(component->ConvertImage(src, nullptr), kInvalid);
    EXPECT_EQ(KvxBayer_AllocData(nullptr, src, dst), kInvalid);
    EXPECT_EQ(KvxBayer_AllocData(component, nullptr, dst), kInvalid);
    EXPECT_EQ(KvxBayer_AllocData(component, src, nullptr), kInvalid);
    EXPECT_EQ(BayerToColor(nullptr, dst, 0), kInvalid);
    EXPECT_EQ(BayerToColor(src, nullptr, 0), kInvalid);
    EXPECT_EQ(KvxBayer_GetComponent(nullptr), nullptr);
    KvxBayer_ReleaseData(nullptr);
    KvxBayer_DeleteComponent(nullptr);
    EXPECT_TRUE(frame.dst.Untouched());
    KvxBayer_DeleteComponent(component);
}

}  // namespace
}  // namespace kvx::test
