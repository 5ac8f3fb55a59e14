/** Bayer frames through the image-processing library's own conversion. */
#pragma once

#include "KvxBayer/BayerConversion.h"

namespace kvx {

/**
 * As ConvertBayer(), behind its checks. What the library cannot do in place goes through bands of rows: edge-aware
 * conversion of padded rows, rows of words at odd addresses, bytes from words, frames past its int indices.
 */
uint32_t ConvertByLibrary(const _KvxImage& src, const _KvxImage& dst, int code, const BayerOutput& output) noexcept;

/** True for the edge-aware codes, false for the bilinear ones. */
bool IsEdgeAware(int code);

}  // namespace kvx
