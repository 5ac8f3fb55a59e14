/** The conversion behind the flat TrueSense functions. */
#pragma once

#include <cstdint>

#include "demosaicers/frame/TrueSenseCall.h"

namespace kvx {

/**
 * Converts as the typed function of these sample types and this layout does: with its persistent demosaicer of the
 * algorithm or, when `temporary`, with one that lives for this call. Bytes clear the record's normalizationEnable.
 *
 * @return a result code of the library
 */
uint32_t ConvertFlat(const TrueSenseCall& call, const PixelLayout& layout, int algType, bool temporary) noexcept;

}  // namespace kvx
