/** The mosaics that the pipeline takes. */
#pragma once

#include <array>
#include <cstdint>

namespace kvx {

/** Of a site of the raw mosaic; odd codes are on even rows. */
enum SiteCode : int32_t {
    kPanEven = 3,
    kPanOdd,
    kRedEven,
    kRedOdd,
    kGreenEven,
    kGreenOdd,
    kBlueEven,
    kBlueOdd,
};

/** By [row % 4][column % 4]. */
using SiteTable = std::array<std::array<int32_t, 4>, 4>;
inline constexpr SiteTable pgprCFA = {{{3, 7, 3, 5}, {8, 4, 6, 4}, {3, 9, 3, 7}, {10, 4, 8, 4}}};
inline constexpr SiteTable pbpgCFA = {{{3, 9, 3, 7}, {10, 4, 8, 4}, {3, 7, 3, 5}, {8, 4, 6, 4}}};
inline constexpr SiteTable prpgCFA = {{{3, 5, 3, 7}, {6, 4, 8, 4}, {3, 7, 3, 9}, {8, 4, 10, 4}}};
inline constexpr SiteTable pgpbCFA = {{{3, 7, 3, 9}, {8, 4, 10, 4}, {3, 5, 3, 7}, {6, 4, 8, 4}}};

/** Of a cell of the low-resolution mosaic. */
enum CellCode : int32_t { kRed, kGreen, kBlue };

/** By [row % 2][column % 2]. */
using CellTable = std::array<std::array<int32_t, 2>, 2>;
inline constexpr CellTable grbgCFA = {{{kGreen, kRed}, {kBlue, kGreen}}};
inline constexpr CellTable bggrCFA = {{{kBlue, kGreen}, {kGreen, kRed}}};
inline constexpr CellTable rggbCFA = {{{kRed, kGreen}, {kGreen, kBlue}}};
inline constexpr CellTable gbrgCFA = {{{kGreen, kBlue}, {kRed, kGreen}}};

/** By the pipeline's pattern number. */
inline constexpr std::array<const SiteTable*, 4> s_siteTables = {&pgprCFA, &pbpgCFA, &prpgCFA, &pgpbCFA};
inline constexpr std::array<const CellTable*, 4> s_cellTables = {&grbgCFA, &bggrCFA, &rggbCFA, &gbrgCFA};

constexpr bool IsCfaPattern(int32_t pattern) {
    return pattern >= 0 && pattern < static_cast<int32_t>(s_siteTables.size());
}

inline constexpr const char* kPatternError = "CFA pattern error.\n";
inline constexpr const char* kColourError = "CFA color error.\n";

}  // namespace kvx
