// Wherever the destination lies in memory, the picture is the one of disjoint buffers.
#include <gtest/gtest.h>

#include <functional>

#include "support/BayerFrames.h"
#include "support/BayerFunctions.h"

namespace kvx::test {
namespace {

constexpr uint32_t kWidth = 37, kHeight = 22;

struct Entry {
    const char* what;
    const BayerDepth* from;
    uint32_t dstType;
    size_t slotBytes;
    std::function<uint32_t(GuardedImage& src, GuardedImage& dst)> convert;
};

std::vector<Entry> AllEntries() {
    const BayerDepth *bytes = &kBayerDepths[0], *words = &kBayerDepths[2];
    std::vector<Entry> entries = {
        {"component, 12 to 8 bits", words, KvxFormat_RGB8, 3, [](auto& s, auto& d) { return CallComponent(s, d, 0); }}};
    for (const int algorithm : {0, 1, 2}) {
        const auto component = [=](auto& s, auto& d) { return CallComponent(s, d, algorithm); };
        const auto records = [=](auto& s, auto& d) { return BayerToColor(&s.Record(), &d.Record(), algorithm); };
        const auto flat = [=](int from, int to, int channels) {
            return [=](auto& s, auto& d) { return CallFlat(from, to, true, channels, s, d, 1, algorithm); };
        };
        entries.insert(entries.end(), {{"component, bytes", bytes, KvxFormat_RGB8, 3, component},
                                       {"component, words", words, KvxFormat_BGR12, 6, component},
                                       {"records, rounded", words, KvxFormat_RGB8, 3, records},
                                       {"records, words", words, KvxFormat_RGB12, 6, records},
                                       {"8u", bytes, 0, 3, flat(8, 8, 3)},
                                       {"16u", words, 0, 6, flat(12, 12, 3)},
                                       {"16u8u", words, 0, 3, flat(12, 8, 3)},
                                       {"16u8u C4R", words, 0, 4, flat(12, 8, 4)},
                                       {"8u alpha", bytes, 0, 4, flat(8, 8, kAlpha)}});
    }
    return entries;
}

TEST(BayerOverlap, GivesThePictureOfDisjointBuffers) {
    unsigned seed = 1;
    for (const Entry& entry : AllEntries()) {
        const auto samples = MakeSamples(Fill::Noise, kWidth, kHeight, entry.from->depth, seed++);
        GuardedImage src = MakeSource(entry.from->patterns[1], entry.from->depth, kWidth, kHeight, 3, samples);
        const size_t rowBytes = kWidth * entry.slotBytes, step = rowBytes + 5;
        GuardedImage dst(entry.dstType, kWidth, kHeight, rowBytes, step);
        ASSERT_EQ(entry.convert(src, dst), 0u) << entry.what;
        const auto expected = dst.Pixels();

        const ptrdiff_t srcBytes = src.Record().imageSize, dstBytes = dst.Record().imageSize;
        for (const ptrdiff_t shift : {ptrdiff_t{0}, ptrdiff_t{1}, srcBytes / 2, srcBytes - 4, -dstBytes / 2,
                                      -dstBytes + 6, srcBytes - dstBytes}) {
            std::vector<uint8_t> memory(srcBytes + 2 * dstBytes);
            uint8_t *const from = memory.data() + dstBytes, *const to = from + shift;
            std::memcpy(from, src.Row(0), srcBytes);
            src.Record().data = from;
            dst.Record().data = to;
            ASSERT_EQ(entry.convert(src, dst), 0u);
            for (size_t row = 0; row < kHeight; ++row)
                ASSERT_EQ(std::memcmp(to + row * step, &expected[row * rowBytes], rowBytes), 0)
                    << entry.what << ", destination at " << shift << ", row " << row;
        }
    }
}

}  // namespace
}  // namespace kvx::test
