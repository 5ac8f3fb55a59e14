#include "KvxDemosaicing/KvxPixelFormat.h"
#include "KvxDemosaicing/KvxTrueSense.h"
#include "demosaicers/frame/TrueSenseTile.h"

namespace {

/** First of the 16 codes of each depth; four patterns of four phases follow each other. */
constexpr uint32_t s_firstOfDepth[] = {KvxFormat_TrueSense_BGGR_WBBW_0_8, KvxFormat_TrueSense_BGGR_WBBW_0_10,
                                       KvxFormat_TrueSense_BGGR_WBBW_0_12, KvxFormat_TrueSense_BGGR_WBBW_0_14};

/** In the order of the codes: the Bayer mosaic of a pattern's cells, and where in the base tile it begins. */
constexpr struct {
    char cells[5];
    int grid;
} s_patterns[] = {{"BGGR", 0}, {"GBRG", 2}, {"GRBG", 8}, {"RGGB", 10}};

constexpr bool ArePatternsOfTile() {
    for (const auto& [cells, grid] : s_patterns)
        for (int i = 0; i < 4; ++i)
            if (cells[i] != kvx::ColourOfCell(grid / 8 + i / 2, grid % 4 / 2 + i % 2)) return false;
    return true;
}
static_assert(ArePatternsOfTile());

}  // namespace

int PixelTypeToTruesenseGrid(unsigned long pixelType) noexcept {
    for (const uint32_t first : s_firstOfDepth) {
        const unsigned long index = pixelType - first;
        if (index >= 16) continue;
        const unsigned long phase = index % 4;  // bit 0: one column on, bit 1: one row on
        return s_patterns[index / 4].grid + static_cast<int>((phase & 1) + (phase >> 1) * 4);
    }
    return -1;
}
