/** One Bayer frame by algorithm 0 or 2. */
#pragma once

#include <cstdint>

#include "KvxBayer/BayerOutput.h"
#include "KvxDemosaicing/KvxImage.h"

namespace kvx {

/**
 * Converts `src` into `dst`, three samples a pixel, by the conversion code `code` (PixelTypeToBayerType()).
 *
 * The result is that of one call of the image-processing library on the whole frame, to the bit, for any line step.
 * Nothing is written outside the pixels of `dst`.
 *
 * @return 0, or a KvxResultCode: InvalidArgument when the records do not fit each other or their buffers,
 *         ConversionFailed when the library threw or there are no pixels, NoMemory
 */
uint32_t ConvertBayer(const _KvxImage& src, const _KvxImage& dst, int code, const BayerOutput& output) noexcept;

}  // namespace kvx
