// Images: row padding, steps, sizes, threads.
#include <gtest/gtest.h>
#include <omp.h>

#include <cstring>

#include "frame/packing/BitByBit.h"
#include "frame/support/Refusals.h"
#include "support/GuardedBuffer.h"
#include "support/InstructionSets.h"

namespace kvx::frame::test {
namespace {

using Bytes = std::vector<uint8_t>;
using fuzz::Edge, fuzz::GuardedBuffer;

/** A packed image and the words in it, with noise in all that is neither. */
struct Pair {
    PackedImage image;
    size_t wordsStep;
    Bytes packed, words;

    /** Noise as samples; bits above the depth are zero. */
    Pair(const PackingName& p, uint32_t width, uint32_t height, RowPadding padding, size_t slack)
        : image{p.packing, width, height, padding, padding == RowPadding::Line ? SlowBytes(p, width) + slack : 0},
          wordsStep(2 * width + slack) {
        packed = Noise<uint8_t>(PackedImageBytes(image), width);
        words = Noise<uint8_t>((height - 1) * wordsStep + 2 * width, height);
        const size_t samples = size_t{width} * height, rowBytes = SlowBytes(p, width);
        const bool lines = padding == RowPadding::Line || IsMipi(p);
        const size_t lineStep = padding == RowPadding::Line ? image.lineStep : rowBytes;
        if (lines) {
            for (size_t row = 0; row < height; ++row) std::fill_n(packed.begin() + row * lineStep, rowBytes, 0);
        } else {
            packed.assign(SlowBytes(p, samples), 0);
        }
        const auto noise = Noise<uint16_t>(samples, samples);
        for (size_t i = 0; i < samples; ++i) {
            const size_t row = i / width, column = i % width;
            SlowPut(p, packed.data() + (lines ? row * lineStep : 0), lines ? column : i, noise[i]);
            const auto sample = static_cast<uint16_t>(noise[i] & ((1u << PackedDepth(p.packing)) - 1));
            std::memcpy(words.data() + row * wordsStep + 2 * column, &sample, sizeof sample);
        }
    }
};

/** `bytes` with noise in place of its rows of `rowBytes`. */
Bytes WithoutRows(Bytes bytes, size_t rowBytes, size_t step) {
    const Bytes noise = Noise<uint8_t>(bytes.size(), rowBytes);
    for (size_t i = 0; i < bytes.size(); ++i)
        if (step == 0 || i % step < rowBytes) bytes[i] = noise[i];
    return bytes;
}

TEST(PackedImage, RandomImagesEqualBitByBitOnEveryInstructionSet) {
    std::mt19937 random(2026);
    const auto upTo = [&random](uint32_t limit) { return static_cast<uint32_t>(random() % (limit + 1)); };
    kvx::test::ForEachInstructionSet([&] {
        for (int round = 0; round < 700; ++round) {
            const PackingName& p = kPackingNames[upTo(std::size(kPackingNames) - 1)];
            const uint32_t width = 1 + upTo(round % 10 ? 40 : 600), height = 1 + upTo(8);
            const Pair pair(p, width, height, RowPadding(upTo(1)), upTo(7));
            const PackedImage& image = pair.image;
            const auto step = static_cast<ptrdiff_t>(pair.wordsStep);
            SCOPED_TRACE(testing::Message() << p.name << ", " << width << " x " << height << ", line step "
                                            << image.lineStep << ", words' step " << step);

            const GuardedBuffer packed(pair.packed, Edge(upTo(1))), words(pair.words, Edge(upTo(1)));
            const GuardedBuffer unpacked(WithoutRows(pair.words, 2 * width, pair.wordsStep), Edge(upTo(1)));
            UnpackImage(image, packed.Data(), packed.Size(), unpacked.Data(), step);
            ASSERT_EQ(unpacked.Content(), pair.words);
            UnpackImage(image, packed.Data(), packed.Size(), unpacked.Data() + (height - 1) * step, -step);  // upwards
            ASSERT_EQ(std::memcmp(unpacked.Data(), words.Data() + (height - 1) * step, 2 * width), 0);

            const Bytes empty = WithoutRows(pair.packed, SlowBytes(p, width), image.lineStep);
            const GuardedBuffer repacked(empty, Edge(upTo(1)));
            PackImage(image, words.Data(), step, repacked.Data(), repacked.Size());
            ASSERT_EQ(repacked.Content(), pair.packed);
            PackImage(image, unpacked.Data() + (height - 1) * step, -step, repacked.Data(), repacked.Size());
            ASSERT_EQ(repacked.Content(), pair.packed);
        }
    });
}

TEST(PackedImage, ThreadsDoNotMeetInAByte) {
    const int before = omp_get_max_threads();
    for (const PackingName& p : {kPackingNames[0], kPackingNames[2], kPackingNames[4], kPackingNames[5]})
        for (const RowPadding padding : {RowPadding::Line, RowPadding::Image}) {
            const Pair pair(p, 517, 1019, padding, 3);  // rows start anywhere in groups
            const auto step = static_cast<ptrdiff_t>(pair.wordsStep);
            for (const int threads : {0, 1, 2, 3, 8, 1000}) {
                SCOPED_TRACE(testing::Message() << p.name << ", threads " << threads);
                Bytes words = WithoutRows(pair.words, 2 * 517, pair.wordsStep);
                UnpackImage(pair.image, pair.packed.data(), pair.packed.size(), words.data(), step, threads);
                EXPECT_TRUE(words == pair.words);
                Bytes packed = WithoutRows(pair.packed, SlowBytes(p, 517), pair.image.lineStep);
                PackImage(pair.image, words.data(), step, packed.data(), packed.size(), threads);
                EXPECT_TRUE(packed == pair.packed);
            }
        }
    EXPECT_EQ(omp_get_max_threads(), before);
}

TEST(PackedImage, SizeTellsTheRowPadding) {
    const struct {
        Packing packing;
        uint32_t width, height;
        size_t size, multiple;
        RowPadding padding;
        size_t lineStep;
    } cases[] = {
        {Packing::Pfnc12p, 5, 3, 24, 1, RowPadding::Line, 8},   // 7.5 bytes a row
        {Packing::Pfnc12p, 5, 3, 23, 1, RowPadding::Image, 0},  // 22.5
        {Packing::Pfnc12p, 4, 3, 18, 1, RowPadding::Line, 6},   // either
        {Packing::Pfnc12p, 4, 3, 24, 8, RowPadding::Line, 8},   //
        {Packing::Pfnc12p, 4, 3, 18, 8, RowPadding::Image, 0},  //
        {Packing::Mipi10, 5, 2, 20, 1, RowPadding::Line, 10},   // whole groups
        {Packing::GigE10Packed, 3, 3, 15, 1, RowPadding::Line, 5},
        {Packing::GigE10Packed, 3, 3, 14, 1, RowPadding::Image, 0},
    };
    for (const auto& c : cases) {
        const PackedImage image = PackedImageOfSize(c.packing, c.width, c.height, c.size, c.multiple);
        EXPECT_EQ(image.padding, c.padding) << c.size;
        EXPECT_EQ(image.lineStep, c.lineStep) << c.size;
        if (c.multiple == 1) {
            EXPECT_EQ(PackedImageBytes(image), c.size);
        }
    }
    for (const size_t size : {0, 22, 25}) {
        for (const char* told : {"takes 24 bytes", "or 23 with"})
            ExpectRefused(kInvalid, told, [&] { PackedImageOfSize(Packing::Pfnc12p, 5, 3, size); });
    }
    EXPECT_EQ(ResultOf([] { PackedImageOfSize(Packing::Pfnc12p, 5, 3, 24, 0); }), kInvalid);
    EXPECT_EQ(ResultOf([] { PackedImageOfSize(Packing::Msb14, 0, 3, 0); }), kInvalid);
    EXPECT_EQ(ResultOf([] { PackedImageOfSize(Packing::Mipi10, 5, 2, 15); }), kInvalid);
}

TEST(PackedImage, RefusesWhatDoesNotFit) {
    Bytes packed(24), words(64, 0xEE);
    uint8_t *const p = packed.data(), *const w = words.data();
    constexpr Packing k12 = Packing::Pfnc12p;
    constexpr RowPadding kLine = RowPadding::Line, kImage = RowPadding::Image;
    constexpr uint32_t kHuge = 0x80000000;
    const struct {
        PackedImage image;
        void* packed;
        size_t size;
        void* words;
        ptrdiff_t step;
        int threads;
        uint32_t code;
    } cases[] = {
        {{k12, 5, 3}, nullptr, 24, w, 10, 1, kNull},
        {{k12, 5, 3}, p, 24, nullptr, 10, 1, kNull},
        {{k12, 5, 3}, p, 23, w, 10, 1, kInvalid},
        {{k12, 5, 3}, p, 24, w, 9, 1, kInvalid},
        {{k12, 5, 3}, p, 24, w, -9, 1, kInvalid},
        {{k12, 5, 3}, p, 24, w, PTRDIFF_MIN, 1, kInvalid},
        {{k12, 5, 3}, p, 24, w, PTRDIFF_MAX, 1, kInvalid},
        {{k12, 5, 3}, p, 24, w, 10, -1, kInvalid},
        {{k12, 5, 3}, p, 24, w, 10, 1025, kInvalid},
        {{Packing(11), 5, 3}, p, 24, w, 10, 1, kInvalid},
        {{k12, 0, 3}, p, 24, w, 10, 1, kInvalid},
        {{k12, 5, 0}, p, 24, w, 10, 1, kInvalid},
        {{k12, 5, kHuge}, p, SIZE_MAX, w, 10, 1, kInvalid},
        {{k12, kHuge, 3}, p, SIZE_MAX, w, 10, 1, kInvalid},
        {{k12, 5, 3, kLine, 7}, p, 24, w, 10, 1, kInvalid},
        {{k12, 5, 3, kLine, SIZE_MAX / 2}, p, SIZE_MAX, w, 10, 1, kInvalid},
        {{k12, 5, 3, RowPadding(2)}, p, 24, w, 10, 1, kInvalid},
        {{k12, 5, 3, kImage, 8}, p, 24, w, 10, 1, kInvalid},
        {{k12, 5, 3}, p, 24, w, 10, 1, 0},
        {{k12, 5, 3, kImage}, p, 23, w, 10, 1, 0},
        {{k12, 5, 1}, p, 24, w, 0, 1, 0},  // one row needs no step
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        const auto& c = cases[i];
        SCOPED_TRACE(i);
        const Bytes wordsBefore = words, packedBefore = packed;
        EXPECT_EQ(ResultOf([&] { UnpackImage(c.image, c.packed, c.size, c.words, c.step, c.threads); }), c.code);
        EXPECT_TRUE(c.code == 0 || words == wordsBefore);
        EXPECT_EQ(ResultOf([&] { PackImage(c.image, c.words, c.step, c.packed, c.size, c.threads); }), c.code);
        EXPECT_TRUE(c.code == 0 || packed == packedBefore);
    }
}

}  // namespace
}  // namespace kvx::frame::test
