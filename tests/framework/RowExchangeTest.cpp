// Conversions that exchange rows give the pixels of those that read and write images, each once.
#include <gtest/gtest.h>

#include <atomic>

#include "KvxDemosaicing/KvxDemosaicing.h"
#include "support/BayerFrames.h"

namespace kvx::test {
namespace {

/** A frame of words and its picture; counts what was done wrong. */
class Exchange {
public:
    Exchange(uint32_t pixelType, uint32_t width, uint32_t height)
        : m_record(KvxImage_Make(pixelType, width, height, 0, nullptr)), m_picture(size_t{3} * width * height, 0xDEAD) {
        std::mt19937 random(width * 31 + height);
        for (size_t i = 0; i < size_t{width} * height; ++i)
            m_samples.push_back(static_cast<uint16_t>(random() & ((1u << m_record.pixelDepth) - 1)));
    }

    /** What the same component makes of the frame in memory, as words. */
    template <class Convert>
    std::vector<uint16_t> InMemory(uint32_t dstType, const Convert& convert) const {
        const auto depth = static_cast<int>(m_record.pixelDepth);
        const auto sampleAt = [&](uint32_t row, uint32_t column) { return m_samples[row * m_record.width + column]; };
        GuardedImage src = MakeSource(m_record.pixelType, depth, m_record.width, m_record.height, 0,
                                      SamplesBy(m_record.width, m_record.height, depth, sampleAt));
        const int bits = KvxPixelFormat_ByCode(dstType)->bitsPerComponent;
        const size_t rowBytes = m_record.width * size_t{bits == 8 ? 3u : 6u};
        GuardedImage dst(dstType, m_record.width, m_record.height, rowBytes, rowBytes);
        EXPECT_EQ(convert(&src.Record(), &dst.Record()), 0u);
        return WordsOf(dst.Pixels(), bits);
    }

    template <class Convert>
    const std::vector<uint16_t>& InRows(const Convert& convert) {
        const KvxRowSource source{
            this, [](void* self, uint32_t row, uint32_t column, uint32_t count, uint16_t* samples) {
                auto& frame = *static_cast<Exchange*>(self);
                if (row >= frame.m_record.height || uint64_t{column} + count > frame.m_record.width) ++frame.m_faults;
                std::copy_n(&frame.m_samples[row * frame.m_record.width + column], count, samples);
            }};
        const KvxPixelSink sink{this, [](void* self, uint32_t row, uint32_t column, uint32_t count, const uint16_t* red,
                                         const uint16_t* green, const uint16_t* blue) {
                                    static_cast<Exchange*>(self)->Take(row, column, count, {red, green, blue});
                                }};
        EXPECT_EQ(convert(&m_record, &source, &sink), 0u);
        EXPECT_EQ(m_faults, 0);
        return m_picture;
    }

private:
    void Take(uint32_t row, uint32_t column, uint32_t count, const std::array<const uint16_t*, 3>& planes) {
        for (uint32_t i = 0; i < count; ++i)
            for (size_t channel = 0; channel < 3; ++channel) {
                uint16_t& sample = m_picture[(row * size_t{m_record.width} + column + i) * 3 + channel];
                if (sample != 0xDEAD) ++m_faults;
                sample = planes[channel][i];
            }
    }

    _KvxImage m_record;
    std::vector<uint16_t> m_samples, m_picture;
    std::atomic<int> m_faults = 0;
};

constexpr std::pair<uint32_t, uint32_t> kSizes[] = {{1, 1}, {1, 9}, {8, 2}, {3, 3}, {37, 26}, {1025, 70}, {2100, 5}};

TEST(RowExchange, GivesThePixelsOfBayerConversions) {
    for (const int64_t algorithm : {0, 1, 2})
        for (const BayerDepth& depth : {kBayerDepths[0], kBayerDepths[2], kBayerDepths[4]})
            for (const uint32_t type : depth.patterns)
                for (const auto& [width, height] : kSizes) {
                    SCOPED_TRACE(testing::Message() << algorithm << " " << type << " " << width << "x" << height);
                    const std::unique_ptr<KvxBayer, decltype(&KvxBayer_DeleteComponent)> bayer(
                        KvxBayer_CreateComponent(), KvxBayer_DeleteComponent);
                    KvxComponent_SetParamInt(KvxBayer_GetComponent(bayer.get()), "BayerAlgType", algorithm);
                    Exchange frame(type, width, height);
                    const auto expected = frame.InMemory(depth.rgb, [&](const _KvxImage* src, _KvxImage* dst) {
                        return KvxBayer_ConvertImage(bayer.get(), src, dst);
                    });
                    ASSERT_EQ(frame.InRows([&](auto... rows) { return KvxBayer_ConvertRows(bayer.get(), rows...); }),
                              expected);
                }
}

TEST(RowExchange, GivesThePixelsOfTrueSenseConversions) {
    tagTrueSenseParam params;
    TrueSense_DefaultValues(&params);
    const std::pair<uint32_t, uint32_t> formats[] = {{KvxFormat_TrueSense_BGGR_WBBW_1_8, KvxFormat_RGB8},
                                                     {KvxFormat_TrueSense_GBRG_WGGW_2_12, KvxFormat_RGB12},
                                                     {KvxFormat_TrueSense_RGGB_WRRW_3_14, KvxFormat_RGB8}};
    for (const int64_t algorithm : {0, 1, 2, 3, 4})
        for (const auto& [type, dstType] : formats)
            for (const int mirrors : {0, 1, 2, 3})
                for (const auto& [width, height] : kSizes) {
                    SCOPED_TRACE(testing::Message() << algorithm << " " << type << " mirrored " << mirrors << ", "
                                                    << width << "x" << height);
                    const std::unique_ptr<KvxTrueSense, decltype(&KvxTrueSense_DeleteComponent)> trueSense(
                        KvxTrueSense_CreateComponent(), KvxTrueSense_DeleteComponent);
                    params.horMirrored = mirrors & 1;
                    params.verMirrored = mirrors >> 1;
                    const int isBytes = dstType == KvxFormat_RGB8;
                    Exchange frame(type, width, height);
                    const auto expected = frame.InMemory(dstType, [&](const _KvxImage* src, _KvxImage* dst) {
                        return KvxTrueSense_ConvertImageWith(trueSense.get(), src, dst, &params, algorithm);
                    });
                    ASSERT_EQ(frame.InRows([&](const _KvxImage* record, auto... rows) {
                        return KvxTrueSense_ConvertRows(trueSense.get(), record, isBytes, &params, algorithm, rows...);
                    }),
                              expected);
                }
}

TEST(RowExchange, RefusesWhatItCannotConvert) {
    KvxBayer* const bayer = KvxBayer_CreateComponent();
    KvxTrueSense* const trueSense = KvxTrueSense_CreateComponent();
    tagTrueSenseParam params;
    TrueSense_DefaultValues(&params);
    const KvxRowSource source{nullptr, [](void*, uint32_t, uint32_t, uint32_t, uint16_t*) { FAIL(); }};
    const KvxPixelSink sink{nullptr, [](void*, uint32_t, uint32_t, uint32_t, const uint16_t*, const uint16_t*,
                                        const uint16_t*) { FAIL(); }};
    const KvxRowSource noRead{};
    const KvxPixelSink noWrite{};
    const auto convert = [&](uint32_t type, uint32_t width, const KvxRowSource* from, const KvxPixelSink* to) {
        const _KvxImage frame = KvxImage_Make(type, width, 4, 0, nullptr);
        return type == KvxFormat_BayerRG12 ? KvxBayer_ConvertRows(bayer, &frame, from, to)
                                           : KvxTrueSense_ConvertRows(trueSense, &frame, 0, &params, 0, from, to);
    };
    for (const auto& [type, family] :
         {std::pair(KvxFormat_BayerRG12, 0x80050000u), {KvxFormat_TrueSense_GBRG_WGGW_2_12, 0x80060000u}}) {
        EXPECT_EQ(convert(type, 4, &noRead, &sink), family + 8);
        EXPECT_EQ(convert(type, 4, &source, &noWrite), family + 8);
        EXPECT_EQ(convert(type, 4, nullptr, &sink), family + 7);
        EXPECT_EQ(convert(type, 4, &source, nullptr), family + 7);
        EXPECT_EQ(convert(type, 0, &source, &sink), type == KvxFormat_BayerRG12 ? family + 1 : family + 9);
        EXPECT_EQ(convert(type, 0x80000000u, &source, &sink), family + 7);
    }
    EXPECT_EQ(convert(KvxFormat_RGB8, 4, &source, &sink), 0x80060007u);
    KvxBayer_DeleteComponent(bayer);
    KvxTrueSense_DeleteComponent(trueSense);
}

}  // namespace
}  // namespace kvx::test
