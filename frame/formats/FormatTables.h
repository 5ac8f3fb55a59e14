/** What the files about formats share. */
#pragma once

#include "KvxFrame/Format.h"

namespace kvx::frame {

/** The name in one scheme, or "" where the scheme has none. */
std::string LibraryName(const Format& format);
std::string PfncName(const Format& format);
std::string FrameName(const Format& format);  // "BayerRG12mipi"
std::string TileName(const Format& format);   // "CFA_RG_GB_12mipi"
std::string GStreamerName(const Format& format);
std::string V4l2Name(const Format& format);  // without trailing blanks

/** Letters of the tile's rows from the first pixel on, "_" between: "RG_GB". */
std::string TileRows(const Format& format);

/** Bits from a row to the next in an image without padding. */
uint64_t RowBits(const Format& format, uint32_t width);

}  // namespace kvx::frame
