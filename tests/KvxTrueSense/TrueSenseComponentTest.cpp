// The TrueSense component and the flat functions: what they choose, keep and refuse. The pictures are the demosaicers'.
#include <gtest/gtest.h>

#include <climits>
#include <functional>

#include "KvxDemosaicing/KvxPixelFormat.h"
#include "KvxDemosaicing/KvxTrueSenseFlat.h"
#include "demosaicers/interpolation/TrueSenseBayerLike.h"
#include "demosaicers/interpolation/TrueSenseToRgb.h"
#include "support/BayerFrames.h"

namespace kvx::test {
namespace {

constexpr uint32_t kInvalid = 0x80060007, kNull = 0x80060008, kNoMemory = 0x80060009;
constexpr uint32_t kWidth = 21, kHeight = 14;

/** A frame and room for its picture. */
struct TrueSenseFrameImages {
    GuardedImage src, dst;
    TrueSenseFrameImages(uint32_t srcType, uint32_t dstType, unsigned seed = 1)
        : src(MakeSource(srcType, DepthOf(srcType), kWidth, kHeight, 6,
                         MakeSamples(Fill::Noise, kWidth, kHeight, DepthOf(srcType), seed))),
          dst(dstType, kWidth, kHeight, kWidth * PixelBytesOf(dstType), kWidth * PixelBytesOf(dstType) + 10) {}

    static int DepthOf(uint32_t type) {
        return KvxPixelFormat_ByCode(type)->bitsPerComponent;
    }
    static size_t PixelBytesOf(uint32_t type) {
        return (type >> 16 & 0xFF) / 8;
    }
};

/** What the algorithm's demosaicer makes of the frame. */
std::vector<uint8_t> Expected(TrueSenseFrameImages& frame, int64_t algorithm, tagTrueSenseParam params) {
    GuardedImage dst = frame.dst.Fresh();
    const _KvxImage& src = frame.src.Record();
    const uint32_t type = dst.Record().pixelType;
    const bool withAlpha = type == KvxFormat_RGBa8 || type == KvxFormat_BGRa8;
    const bool blueFirst = (type & 1) == 0 && (type & 0xFF) >= 0x72;  // the table alternates
    const TrueSenseCall call{.src = src.data,
                             .srcSampleSize = src.pixelDepth == 8 ? 1u : 2u,
                             .roi = {0, 0, kWidth, kHeight},
                             .size = {kWidth, kHeight},
                             .srcLineStep = static_cast<int>(src.lineStep),
                             .pixelDepth = static_cast<int>(src.pixelDepth),
                             .dst = dst.Record().data,
                             .dstSampleSize = TrueSenseFrameImages::DepthOf(type) == 8 ? 1u : 2u,
                             .dstLineStep = static_cast<int>(dst.Record().lineStep),
                             .grid = static_cast<unsigned char>(PixelTypeToTruesenseGrid(src.pixelType)),
                             .params = &params};
    const auto run = [&](auto&& demosaicer) { EXPECT_EQ(demosaicer.Run(call, {withAlpha, blueFirst}), 0); };
    if (src.pixelDepth == 8)
        algorithm == 2 ? run(TrueSenseBayerLike<uint8_t>()) : run(TrueSenseToRgb<uint8_t>());
    else
        algorithm == 2 ? run(TrueSenseBayerLike<uint16_t>()) : run(TrueSenseToRgb<uint16_t>());
    return dst.Pixels();
}

class TrueSenseComponent : public testing::Test {
protected:
    ~TrueSenseComponent() override {
        KvxTrueSense::DeleteComponent(m_trueSense);
    }
    void Set(const char* name, int64_t value) {
        ASSERT_EQ(m_component->SetParamInt(name, value), 0u) << name;
    }
    tagTrueSenseParam Params() {
        tagTrueSenseParam params;
        EXPECT_EQ(KvxTrueSense_GetParams(m_trueSense, &params), 0u);
        return params;
    }
    uint32_t Convert(TrueSenseFrameImages& frame) {
        return KvxTrueSense_ConvertImage(m_trueSense, &frame.src.Record(), &frame.dst.Record());
    }

    KvxTrueSense* m_trueSense = KvxTrueSense::CreateComponent();
    KvxComponent* m_component = KvxTrueSense_GetComponent(m_trueSense);
};

const uint32_t kSources[] = {KvxFormat_TrueSense_BGGR_WBBW_0_8, KvxFormat_TrueSense_GBRG_WGGW_1_10,
                             KvxFormat_TrueSense_GRBG_WGGW_2_12, KvxFormat_TrueSense_RGGB_WRRW_3_14};

TEST_F(TrueSenseComponent, EverySourceToEveryDestinationOfItsTable) {
    for (const int64_t algorithm : {0, 2, 0}) {
        Set("TrueSenseAlgType", algorithm);
        for (const uint32_t srcType : kSources)
            for (uint32_t index = 0; index < KVX_PIXEL_FORMAT_COUNT; ++index) {
                const _KvxPixelFormat& format = *KvxPixelFormat_ByIndex(index);
                SCOPED_TRACE(testing::Message() << std::hex << srcType << " to " << format.name);
                TrueSenseFrameImages frame(srcType, format.pixelType, index);
                const bool colour = format.pixelType >> 24 == 2 && (format.pixelType >> 12 & 0xF) == 0;
                const bool fits = colour && (format.bitsPerComponent == 8 || frame.src.Record().pixelDepth > 8);
                ASSERT_EQ(Convert(frame), fits ? 0u : kInvalid);
                tagTrueSenseParam params = Params();
                GuardedImage flat = frame.dst.Fresh();
                ASSERT_EQ(TrueSenseToColor(&frame.src.Record(), &flat.Record(), &params, static_cast<int>(algorithm),
                                           index % 2),
                          fits ? 0u : kInvalid);
                if (fits) {
                    ASSERT_EQ(frame.dst.Pixels(), Expected(frame, algorithm, params));
                    ASSERT_TRUE(frame.dst.GuardsIntact());
                    ASSERT_EQ(flat.Pixels(), frame.dst.Pixels());
                } else {
                    ASSERT_TRUE(frame.dst.Untouched() && flat.Untouched());
                }
            }
    }
}

TEST_F(TrueSenseComponent, ParametersReachTheNextFrameAndBytesAreNeverDeepened) {
    TrueSenseFrameImages words(kSources[2], KvxFormat_RGB16), bytes(kSources[0], KvxFormat_RGB8);
    ASSERT_EQ(Convert(words), 0u);
    Set("horMirrored", 1);
    const tagTrueSenseParam params = Params();
    Set("normalizationEnable", 1);
    ASSERT_EQ(Convert(bytes), 0u);
    EXPECT_EQ(bytes.dst.Pixels(), Expected(bytes, 0, params));
    ASSERT_EQ(Convert(words), 0u);
    EXPECT_EQ(words.dst.Pixels(), Expected(words, 0, Params()));
    EXPECT_EQ(Params().normalizationEnable, 1);
    EXPECT_EQ(m_component->GetComponentTypeID(), 6);
}

TEST_F(TrueSenseComponent, ConvertsWithARecordAndAnAlgorithmOfTheCallers) {
    std::vector<uint16_t> negative(KVX_TONE_TABLE_SIZE);
    for (size_t i = 0; i < negative.size(); ++i) negative[i] = static_cast<uint16_t>(4095 - i);
    tagTrueSenseParam params = Params();
    params.toneTable = negative.data();
    params.verMirrored = params.normalizationEnable = 1;
    Set("TrueSenseAlgType", 6);  // counts for KvxTrueSense_ConvertImage() alone
    for (const uint32_t source : {kSources[2], kSources[0]}) {
        TrueSenseFrameImages frame(source, KvxFormat_BGR8, 5);
        const auto convert = [&](const tagTrueSenseParam* record, int64_t algorithm) {
            return KvxTrueSense_ConvertImageWith(m_trueSense, &frame.src.Record(), &frame.dst.Record(), record,
                                                 algorithm);
        };
        EXPECT_EQ(convert(nullptr, 2), kInvalid);
        EXPECT_EQ(convert(&params, 5), kInvalid);
        EXPECT_EQ(KvxTrueSense_ConvertImageWith(nullptr, &frame.src.Record(), &frame.dst.Record(), &params, 2),
                  kInvalid);
        EXPECT_TRUE(frame.dst.Untouched());
        ASSERT_EQ(convert(&params, 2), 0u);
        params.normalizationEnable = source == kSources[2];  // bytes are never deepened
        EXPECT_EQ(frame.dst.Pixels(), Expected(frame, 2, params));
    }
    EXPECT_EQ(Params().toneTable, nullptr);
    EXPECT_EQ(Params().verMirrored, 0);
}

TEST_F(TrueSenseComponent, AllocDataChecksTheFormatAndTheAlgorithm) {
    TrueSenseFrameImages frame(kSources[1], KvxFormat_RGB8);
    _KvxImage* src = &frame.src.Record();
    _KvxImage* dst = &frame.dst.Record();
    EXPECT_EQ(KvxTrueSense_AllocData(m_trueSense, src, dst), 0u);
    EXPECT_EQ(KvxTrueSense_AllocData(m_trueSense, nullptr, dst), kInvalid);
    EXPECT_EQ(KvxTrueSense_AllocData(m_trueSense, src, nullptr), kInvalid);
    for (const int64_t algorithm : {5, 6}) {
        Set("TrueSenseAlgType", algorithm);
        EXPECT_EQ(KvxTrueSense_AllocData(m_trueSense, src, dst), kInvalid);
        EXPECT_EQ(Convert(frame), kInvalid);
    }
    Set("TrueSenseAlgType", 0);
    for (const uint32_t type : {0x04080130u, 0x04080141u, uint32_t{KvxFormat_BayerRG8}, uint32_t{KvxFormat_RGB8}, 0u}) {
        src->pixelType = type;
        EXPECT_EQ(KvxTrueSense_AllocData(m_trueSense, src, dst), kInvalid) << std::hex << type;
        EXPECT_EQ(Convert(frame), kInvalid) << std::hex << type;
    }
    EXPECT_TRUE(frame.dst.Untouched());
}

TEST_F(TrueSenseComponent, BadRecordsAreRefused) {
    struct Case {
        const char* what;
        std::function<void(TrueSenseFrameImages&)> spoil;
        uint32_t code;
    };
    const Case cases[] = {
        {"null source data", [](auto& f) { f.src.Record().data = nullptr; }, kNull},
        {"null destination data", [](auto& f) { f.dst.Record().data = nullptr; }, kNull},
        {"no columns", [](auto& f) { f.src.Record().width = 0; }, kNoMemory},
        {"no rows", [](auto& f) { f.src.Record().height = 0; }, kNoMemory},
        {"depth 11", [](auto& f) { f.src.Record().pixelDepth = 11; }, kInvalid},
        {"source step short", [](auto& f) { f.src.Record().lineStep = kWidth * 2 - 1; }, kInvalid},
        {"destination step short", [](auto& f) { f.dst.Record().lineStep = kWidth * 3 - 1; }, kInvalid},
        {"source step past INT_MAX", [](auto& f) { f.src.Record().lineStep = 0xFFFFFF00; }, kInvalid},
        {"destination step past INT_MAX", [](auto& f) { f.dst.Record().lineStep = 0xFFFFFF00; }, kInvalid},
        {"width past INT_MAX", [](auto& f) { f.src.Record().width = 0x80000010; }, kInvalid},
        {"height past INT_MAX", [](auto& f) { f.src.Record().height = 0xFFFFFFFF; }, kInvalid},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TrueSenseFrameImages frame(kSources[2], KvxFormat_RGB8);
        c.spoil(frame);
        EXPECT_EQ(Convert(frame), c.code);
        EXPECT_EQ(TrueSenseToColor(&frame.src.Record(), &frame.dst.Record(), nullptr, 0, 1), c.code);
        EXPECT_TRUE(frame.dst.Untouched());
    }
    TrueSenseFrameImages frame(kSources[2], KvxFormat_RGB8);
    _KvxImage* src = &frame.src.Record();
    EXPECT_EQ(KvxTrueSense_ConvertImage(nullptr, src, src), kInvalid);
    EXPECT_EQ(KvxTrueSense_ConvertImage(m_trueSense, nullptr, src), kInvalid);
    EXPECT_EQ(KvxTrueSense_ConvertImage(m_trueSense, src, nullptr), kInvalid);
    EXPECT_EQ(TrueSenseToColor(nullptr, src, nullptr, 0, 0), kInvalid);
    EXPECT_EQ(TrueSenseToColor(src, nullptr, nullptr, 0, 0), kInvalid);
    EXPECT_EQ(KvxTrueSense_AllocData(nullptr, src, src), kInvalid);
    EXPECT_EQ(KvxTrueSense_GetComponent(nullptr), nullptr);
    KvxTrueSense_ReleaseData(nullptr);
    KvxTrueSense_DeleteComponent(nullptr);
}

TEST(TrueSenseFlat, AlgorithmsTheRecordAndTheTwoWidePixelFunctions) {
    TrueSenseFrameImages frame(kSources[0], KvxFormat_RGB8);
    const _KvxRect region{0, 0, kWidth, kHeight};
    const _KvxSize size{kWidth, kHeight};
    const auto convert = [&](tagTrueSenseParam* params, int algorithm, bool temporary) {
        return TrueSenseToRGB_8u_C1C3R(static_cast<uint8_t*>(frame.src.Record().data), region, size,
                                       static_cast<int>(frame.src.Record().lineStep), 8,
                                       static_cast<uint8_t*>(frame.dst.Record().data),
                                       static_cast<int>(frame.dst.Record().lineStep), 0, params, algorithm, temporary);
    };
    tagTrueSenseParam params;
    TrueSense_DefaultValues(&params);
    for (const int algorithm : {5, -1}) {
        params.normalizationEnable = 1;
        EXPECT_EQ(convert(&params, algorithm, algorithm % 2 != 0), kInvalid) << algorithm;
        EXPECT_EQ(params.normalizationEnable, 0);
        EXPECT_TRUE(frame.dst.Untouched());
    }
    for (const int algorithm : {0, 2, 0, 0, 2}) {  // the one used before gives its memory back, and works again later
        for (const bool temporary : {false, true}) {
            ASSERT_EQ(convert(nullptr, algorithm, temporary), 0u);
            EXPECT_EQ(frame.dst.Pixels(), Expected(frame, algorithm, params)) << algorithm;
        }
    }

    // Four words a pixel: the fourth stays as it was. TrueSenseToColor() never chooses these two.
    TrueSenseFrameImages words(kSources[2], KvxFormat_RGB12);
    GuardedImage wide(0, kWidth, kHeight, kWidth * 8, kWidth * 8);
    const auto before = WordsOf(wide.Pixels(), 12), expected = WordsOf(Expected(words, 0, params), 12);
    for (const auto function : {TrueSenseToRGB_16u_C1C4R, TrueSenseToBGR_16u_C1C4R}) {
        ASSERT_EQ(function(static_cast<uint16_t*>(words.src.Record().data), region, size,
                           static_cast<int>(words.src.Record().lineStep), 12,
                           static_cast<uint16_t*>(wide.Record().data), kWidth * 8, 8 + 4, nullptr, 0, true),
                  0u);
        const bool blueFirst = function == TrueSenseToBGR_16u_C1C4R;
        const auto pixels = WordsOf(wide.Pixels(), 12);
        for (size_t i = 0; i < pixels.size(); ++i) {
            const size_t channel = i % 4, colour = blueFirst ? 2 - channel : channel;
            ASSERT_EQ(pixels[i], channel == 3 ? before[i] : expected[i / 4 * 3 + colour]);
        }
    }
}

}  // namespace
}  // namespace kvx::test
