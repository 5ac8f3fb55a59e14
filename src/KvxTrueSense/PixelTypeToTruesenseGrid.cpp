#include "KvxDemosaicing/KvxPixelFormat.h"
#include "KvxDemosaicing/KvxTrueSense.h"

namespace {

/** First of the 16 codes of each depth; four patterns of four phases follow each other. */
constexpr uint32_t s_firstOfDepth[] = {KvxFormat_TrueSense_BGGR_WBBW_0_8, KvxFormat_TrueSense_BGGR_WBBW_0_10,
                                       KvxFormat_TrueSense_BGGR_WBBW_0_12, KvxFormat_TrueSense_BGGR_WBBW_0_14};

/** Patterns are the base tile two columns (GBRG), two rows (GRBG) or both (RGGB) on. */
constexpr int s_originOfPattern[] = {0, 2, 8, 10};

}  // namespace

int PixelTypeToTruesenseGrid(unsigned long pixelType) noexcept {
    for (const uint32_t first : s_firstOfDepth) {
        const unsigned long index = pixelType - first;
        if (index >= 16) continue;
        const unsigned long phase = index % 4;  // bit 0: one column on, bit 1: one row on
        return s_originOfPattern[index / 4] + static_cast<int>((phase & 1) + (phase >> 1) * 4);
    }
    return -1;
}
