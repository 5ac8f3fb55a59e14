#include "framework/PixelFormats.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

#include "KvxDemosaicing/KvxImage.h"
#include "KvxDemosaicing/KvxTrueSense.h"
#include "support/BayerFrames.h"
#include "support/Checksum.h"

namespace {

TEST(PixelFormats, TheTableIsTheOneOfTheInterface) {
    std::ostringstream table;  // as a program that knows only the rules of names and codes writes it
    for (uint32_t index = 0; index < KVX_PIXEL_FORMAT_COUNT; ++index) {
        const _KvxPixelFormat& format = *KvxPixelFormat_ByIndex(index);
        table << format.name << ' ' << format.components << ' ' << format.componentCount << ' '
              << format.bitsPerComponent << ' ' << format.phase << ' ' << std::hex << format.pixelType << std::dec
              << '\n';
        EXPECT_EQ(KvxPixelFormat_ByName(format.name), &format) << format.name;
        EXPECT_EQ(KvxPixelFormat_ByCode(format.pixelType), &format) << format.name;
    }
    EXPECT_EQ(kvx::test::ChecksumOf(table.str()), 0x7D85606Cu) << table.str();
}

TEST(PixelFormats, WhatIsNotInTheTable) {
    EXPECT_EQ(KvxPixelFormat_ByName(nullptr), nullptr);
    EXPECT_EQ(KvxPixelFormat_ByName(""), nullptr);
    EXPECT_EQ(KvxPixelFormat_ByName("mono8"), nullptr);
    EXPECT_EQ(KvxPixelFormat_ByIndex(133), nullptr);
    EXPECT_EQ(KvxPixelFormat_ByIndex(UINT32_MAX), nullptr);
    for (const uint32_t code : {0u, 0x03080100u, 0x03080186u, 0x030801FFu, 0x0308010Eu ^ 0x01000000u})
        EXPECT_EQ(KvxPixelFormat_ByCode(code), nullptr) << std::hex << code;
}

TEST(PixelFormats, LetterLookupsFitTheirFormats) {
    // Every component letter of a format lies where the format's own lookup says.
    for (uint32_t index = 0; index < KVX_PIXEL_FORMAT_COUNT; ++index) {
        const _KvxPixelFormat& format = *KvxPixelFormat_ByIndex(index);
        if ((format.pixelType & kvx::kColourModelMask) != kvx::kRgb) continue;
        for (uint32_t position = 0; position < format.componentCount; ++position)
            EXPECT_EQ(format.getIndex(format.components[2 * position]), position) << format.name;
    }
    EXPECT_EQ(GetIndexMONO('Y'), 0u);
    for (const char letter : {'Y', 'U', 'V'}) EXPECT_EQ(GetIndexYUV(letter), std::string("YUV").find(letter));
    for (const int letter : {0, -32768, 32767, 'R' + 256, int{'W'}})
        for (const auto lookup : {GetIndexRGB, GetIndexBGR, GetIndexRGBA, GetIndexBGRA, GetIndexMONO, GetIndexYUV})
            EXPECT_EQ(lookup(static_cast<int16_t>(letter)), UINT32_MAX) << letter;
    for (const auto lookup : {GetIndexRGB, GetIndexBGR}) EXPECT_EQ(lookup('A'), UINT32_MAX);
}

/** Which format has which grid: see FormatTest.cpp. */
TEST(PixelTypes, NameTheConversionOfUnpackedBayerFormatsAndTheGridOfTrueSense) {
    for (uint32_t index = 0; index < KVX_PIXEL_FORMAT_COUNT; ++index) {
        const _KvxPixelFormat& format = *KvxPixelFormat_ByIndex(index);
        int known = -1;
        for (const kvx::test::BayerDepth& depth : kvx::test::kBayerDepths)
            for (int pattern = 0; pattern < 4; ++pattern)
                if (depth.patterns[pattern] == format.pixelType) known = pattern;
        for (const int algorithm : {0, 1, 2, 3, -1})
            for (const bool blueFirst : {false, true})
                EXPECT_EQ(PixelTypeToBayerType(format.pixelType, algorithm, blueFirst),
                          known == -1 ? -1 : kvx::test::CodeOf(known, algorithm, blueFirst))
                    << format.name << ", algorithm " << algorithm;
        EXPECT_EQ(PixelTypeToTruesenseGrid(format.pixelType) == -1, format.pixelType >> 24 != 4) << format.name;
    }
    for (const uint32_t code : {0u, 0x0308010Cu, 0x03080111u, 0xFFFFFFFFu})
        EXPECT_EQ(PixelTypeToBayerType(code, 0, false), -1);
    for (const unsigned long first : {0x04080131, 0x04100241, 0x04100351, 0x04100461})  // of sixteen
        for (const unsigned long code : {first - 1, first + 16, first ^ 0x07000000, first | 1ul << 32})
            EXPECT_EQ(PixelTypeToTruesenseGrid(code), -1) << std::hex << code;
}

TEST(ImageRecords, MakeSetsAllFields) {
    uint8_t pixels[4];
    const _KvxImage image = KvxImage_Make(KvxFormat_BayerRG12, 3, 5, 7, pixels);
    const _KvxImage expected{96, 0x00020000, 0x03100316, 12, {}, 3, 5, 35, 7, {}, pixels, {}};
    EXPECT_EQ(std::memcmp(&image, &expected, sizeof image), 0);
}

TEST(ImageRecords, CompareByAllFields) {
    const _KvxRect rect{1, 2, 3, 4};
    for (const _KvxRect& other : {_KvxRect{0, 2, 3, 4}, {1, 0, 3, 4}, {1, 2, 0, 4}, {1, 2, 3, 0}})
        EXPECT_TRUE(rect != other && !(rect == other));
    EXPECT_TRUE(rect == (_KvxRect{1, 2, 3, 4}));
    const _KvxSize size{1, 2};
    EXPECT_TRUE(size == (_KvxSize{1, 2}) && size != (_KvxSize{1, 3}) && size != (_KvxSize{0, 2}));
}

}  // namespace
