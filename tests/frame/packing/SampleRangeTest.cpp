// Ranges of samples: the layouts worked out by hand, and refusals. Images are compared with the layouts bit by bit.
#include <cstring>

#include "frame/packing/BitByBit.h"
#include "frame/support/Refusals.h"

namespace kvx::frame::test {
namespace {

using Bytes = std::vector<uint8_t>;
using Words = std::vector<uint16_t>;

struct Example {
    Packing packing;
    Words samples;
    Bytes packed;
};

const Example kExamples[] = {
    {Packing::Pfnc10p, {0x2A5, 0x13C, 0x0F0, 0x3FF}, {0xA5, 0xF2, 0x04, 0xCF, 0xFF}},
    {Packing::Pfnc12p, {0xABC, 0x123}, {0xBC, 0x3A, 0x12}},
    {Packing::Pfnc14p, {0x2ABC, 0x1123, 0x3F0F, 0x0C35}, {0xBC, 0xEA, 0x48, 0xF4, 0xF0, 0xD7, 0x30}},
    {Packing::GigE10Packed, {0x2A5, 0x13C, 0x0F0, 0x3FF}, {0xA9, 0x01, 0x4F, 0x3C, 0x30, 0xFF}},
    {Packing::GigE12Packed, {0xABC, 0x123}, {0xAB, 0x3C, 0x12}},
    {Packing::Mipi10, {0x2A5, 0x13C, 0x0F0, 0x3FF}, {0xA9, 0x4F, 0x3C, 0xFF, 0xC1}},
    {Packing::Mipi12, {0xABC, 0x123}, {0xAB, 0x12, 0x3C}},
    {Packing::Mipi14, {0x2ABC, 0x1123, 0x3F0F, 0x0C35}, {0xAA, 0x44, 0xFC, 0x30, 0xFC, 0xF8, 0xD4}},
    {Packing::Msb10, {0x2A5}, {0x40, 0xA9}},
    {Packing::Msb12, {0xABC}, {0xC0, 0xAB}},
    {Packing::Msb14, {0x2ABC}, {0xF0, 0xAA}},
};

TEST(SampleRange, LayoutsAreAsWorkedOutByHandAndNeighboursStay) {
    ASSERT_EQ(std::size(kExamples), std::size(kPackingNames));
    for (const Example& example : kExamples)
        for (const size_t times : {1, 16}) {  // in plain form; in vectors
            SCOPED_TRACE(testing::PrintToString(example.packing));
            Words samples;
            Bytes packed;
            for (size_t i = 0; i < times; ++i) {
                samples.insert(samples.end(), example.samples.begin(), example.samples.end());
                packed.insert(packed.end(), example.packed.begin(), example.packed.end());
            }
            Bytes bytes(packed.size());
            Words words(samples.size());
            PackSamples(example.packing, samples.data(), 0, samples.size(), bytes.data(), bytes.size());
            EXPECT_EQ(bytes, packed);
            UnpackSamples(example.packing, packed.data(), packed.size(), 0, words.size(), words.data());
            EXPECT_EQ(words, samples);
            for (size_t i = 0; i < samples.size(); ++i) {  // the neighbours of a sample stay
                Words changed = samples;
                changed[i] ^= 0x155;
                PackSamples(example.packing, &changed[i], i, 1, bytes.data(), bytes.size());
                UnpackSamples(example.packing, bytes.data(), bytes.size(), 0, words.size(), words.data());
                ASSERT_EQ(words, changed) << i;
                PackSamples(example.packing, &samples[i], i, 1, bytes.data(), bytes.size());
            }
            EXPECT_EQ(bytes, packed);
        }
}

TEST(SampleRange, RefusesWhatDoesNotFit) {
    Bytes packed(8);
    Words words(9, 0xBEEF);
    const struct {
        int packing;
        const void* packed;
        size_t size, first, count;
        uint16_t* words;
        uint32_t code;
    } cases[] = {
        {11, packed.data(), 8, 0, 1, words.data(), kInvalid},  // no packing
        {0, nullptr, 8, 0, 1, words.data(), kNull},            //
        {0, packed.data(), 8, 0, 1, nullptr, kNull},           //
        {0, packed.data(), 8, 0, 7, words.data(), kInvalid},   // takes nine bytes
        {5, packed.data(), 8, 4, 1, words.data(), kInvalid},   // the second group is not whole
        {8, packed.data(), 8, SIZE_MAX, 2, words.data(), kInvalid},
        {8, packed.data(), SIZE_MAX, SIZE_MAX, 1, words.data(), kInvalid},
        {0, packed.data(), SIZE_MAX, PTRDIFF_MAX, PTRDIFF_MAX, words.data(), kInvalid},
        {8, packed.data(), 8, 1, SIZE_MAX, words.data(), kInvalid},
    };
    for (const auto& c : cases) {
        const auto packing = static_cast<Packing>(c.packing);
        EXPECT_EQ(ResultOf([&] { UnpackSamples(packing, c.packed, c.size, c.first, c.count, c.words); }), c.code);
        EXPECT_EQ(
            ResultOf([&] { PackSamples(packing, c.words, c.first, c.count, const_cast<void*>(c.packed), c.size); }),
            c.code);
    }
    EXPECT_EQ(packed, Bytes(8));
    EXPECT_EQ(words, Words(9, 0xBEEF));
    UnpackSamples(Packing::Pfnc10p, packed.data(), 8, 0, 6, words.data());  // exactly fits
    UnpackSamples(Packing::Pfnc10p, packed.data(), 8, 6, 0, nullptr);
}

}  // namespace
}  // namespace kvx::frame::test
