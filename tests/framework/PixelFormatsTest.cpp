#include "framework/PixelFormats.h"

#include <gtest/gtest.h>

#include "KvxDemosaicing/KvxImage.h"

namespace {

TEST(PixelFormats, RowsThatFixTheLayoutOfTheCode) {
    struct Row {
        const char* name;
        const char* components;
        uint32_t code, index, phase;
    };
    for (const Row& row : {Row{"Mono8", "Y", 0x01080101, 0, 0},
                           {"Mono10_FLExPacked", "Y", 0x010C3205, 4, 0},
                           {"Mono8_FLExPacked", "Y", 0x0108310C, 11, 0},
                           {"BayerGR8", "G R G2 B", 0x0308010D, 12, 0},
                           {"BayerBG12", "B G R G2", 0x03100318, 23, 0},
                           {"BayerGR10p", "G R G2 B", 0x030A2219, 24, 0},
                           {"BayerBG12Packed", "B G R G2", 0x030C1328, 39, 0},
                           {"BayerGB16", "G B G2 R", 0x0310052F, 46, 0},
                           {"TrueSense_BGGR_WBBW_0_8", "W B W G B W G W W G W R G W R W", 0x04080131, 48, 0},
                           {"TrueSense_GRBG_WGGW_2_10", "W G W R G W R W W B W G B W G W", 0x0410024B, 74, 2},
                           {"TrueSense_RGGB_WRRW_3_14", "W R W G R W G W W G W B G W B W", 0x04100470, 111, 3},
                           {"RGB8", "R G B", 0x02180171, 112, 0},
                           {"BGRa8", "B G R A", 0x02200174, 115, 0},
                           {"BGR16", "B G R", 0x0230057C, 123, 0},
                           {"RGB_12_FLEX_Packed", "R G B", 0x0224337F, 126, 0},
                           {"YUV422_10_PACKED", "Y U Y V", 0x05143283, 130, 0},
                           {"YCbCr422_8", "Y Cb Y Cr", 0x05100185, 132, 0}}) {
        const _KvxPixelFormat* format = KvxPixelFormat_ByName(row.name);
        ASSERT_NE(format, nullptr) << row.name;
        EXPECT_EQ(format->pixelType, row.code) << row.name;
        EXPECT_EQ(format->phase, row.phase) << row.name;
        EXPECT_STREQ(format->components, row.components);
        EXPECT_EQ(format, KvxPixelFormat_ByIndex(row.index));
        EXPECT_EQ(format, KvxPixelFormat_ByCode(row.code));
    }
}

TEST(PixelFormats, EveryRowIsFoundByItsNameAndItsCode) {
    for (uint32_t index = 0; index < KVX_PIXEL_FORMAT_COUNT; ++index) {
        const _KvxPixelFormat* format = KvxPixelFormat_ByIndex(index);
        EXPECT_EQ(KvxPixelFormat_ByName(format->name), format) << format->name << " stands in two rows";
        EXPECT_EQ(KvxPixelFormat_ByCode(format->pixelType), format) << format->name;
    }
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
    EXPECT_EQ(GetIndexYUV('Y'), 0u);
    EXPECT_EQ(GetIndexYUV('U'), 1u);
    EXPECT_EQ(GetIndexYUV('V'), 2u);
    using Lookup = uint32_t (*)(int16_t);
    for (const auto& [lookup, letter] : {std::pair<Lookup, int>{GetIndexRGB, 'A'},
                                         {GetIndexBGR, 'A'},
                                         {GetIndexMONO, 'R'},
                                         {GetIndexYUV, 'W'},
                                         {GetIndexRGB, 0},
                                         {GetIndexRGBA, -32768},
                                         {GetIndexBGRA, 32767},
                                         {GetIndexRGB, 'R' + 256}})
        EXPECT_EQ(lookup(static_cast<int16_t>(letter)), UINT32_MAX) << letter;
}

TEST(PixelFormats, BlueFirstFormats) {
    for (uint32_t row = 0; row < 256; ++row) {
        const bool expected = row == 0x72 || row == 0x74 || row == 0x76 || row == 0x78 || row == 0x7A || row == 0x7C;
        EXPECT_EQ(kvx::g_isBGR[row], expected ? 5 : 0) << row;
    }
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
