#include <gtest/gtest.h>

#include <string>

#include "KvxDemosaicing/KvxPixelFormat.h"
#include "KvxDemosaicing/KvxTrueSense.h"

namespace {

// The component string of a format is the tile of its pattern at phase 0; a phase moves the origin by a column (bit 0)
// and a row (bit 1). So each format names the colour of every site, and the grid index must name the same.
TEST(PixelTypeToTruesenseGrid, AgreesWithTheComponentsOfEveryFormat) {
    const std::string base = "WBWGBWGWWGWRGWRW";
    int formats = 0;
    for (uint32_t i = 0; i < KVX_PIXEL_FORMAT_COUNT; ++i) {
        const _KvxPixelFormat& format = *KvxPixelFormat_ByIndex(i);
        const int grid = PixelTypeToTruesenseGrid(format.pixelType);
        if (format.pixelType >> 24 != 4) {
            EXPECT_EQ(grid, -1) << format.name;
            continue;
        }
        ++formats;
        ASSERT_TRUE(grid >= 0 && grid < 16) << format.name;
        for (int row = 0; row < 4; ++row)
            for (int column = 0; column < 4; ++column) {
                const int r = row + static_cast<int>(format.phase >> 1),
                          c = column + static_cast<int>(format.phase & 1);
                EXPECT_EQ(base[(row + grid / 4) % 4 * 4 + (column + grid % 4) % 4],
                          format.components[2 * (r % 4 * 4 + c % 4)])
                    << format.name << " at " << row << ", " << column;
            }
    }
    EXPECT_EQ(formats, 64);
}

TEST(PixelTypeToTruesenseGrid, KnowsTheEdgesOfItsRanges) {
    for (const unsigned long first : {0x04080131, 0x04100241, 0x04100351, 0x04100461})  // of sixteen
        for (const unsigned long code : {first - 1, first + 16})
            EXPECT_EQ(PixelTypeToTruesenseGrid(code), -1) << std::hex << code;
    for (const unsigned long code : {0x03080131ul, 0ul, 0x104080131ul})
        EXPECT_EQ(PixelTypeToTruesenseGrid(code), -1) << std::hex << code;
}

}  // namespace
