/** What a conversion's parameters mean to the noise-reducing pipeline. */
#pragma once

#include <array>
#include <cstdint>

#include "KvxDemosaicing/KvxPipeline.h"
#include "demosaicers/frame/TrueSenseFrame.h"
#include "demosaicers/frame/TrueSenseTile.h"

namespace kvx {

/** The pipeline is coarser at its borders: a tile of neighbours around the region keeps them out of the picture. */
constexpr FrameRules kDenoisingRules = {.oddDepths = true, .margin = kTileSize};

/** The pattern number of the base tile. */
constexpr int32_t kBaseTilePattern = 1;

/** The pipeline's parameters, without its buffers and its tone scale. */
ImageProcessParam PipelineParamOf(const WorkingArea& area, const tagTrueSenseParam& params) noexcept;

/** 8-bit display values by 12-bit linear values: the caller's table, or the built-in curve when null. */
std::array<uint16_t, KVX_TONE_TABLE_SIZE> ByteToneOf(const uint16_t* toneTable) noexcept;

}  // namespace kvx
