/** One Bayer frame by algorithm 0 or 2. */
#pragma once

#include <cstdint>

#include "KvxBayer/BayerOutput.h"
#include "KvxDemosaicing/KvxImage.h"

namespace kvx {

/**
 * Converts `src` into `dst`, three samples a pixel, by the conversion code `code` (PixelTypeToBayerType()).
 *
 * The samples are those of the image-processing library's conversion with this code, to the bit: computed in one pass
 * because the library's is scalar for words, gives words only, ignores the row padding in its edge-aware form, and
 * refuses words at odd addresses. Any line step will do; nothing is written outside the pixels of `dst`.
 *
 * @return 0, or a KvxResultCode: InvalidArgument when the records do not fit each other or their buffers,
 *         ConversionFailed for a frame without pixels
 */
uint32_t ConvertBayer(const _KvxImage& src, const _KvxImage& dst, int code, const BayerOutput& output,
                      SlotBytes slot = SlotBytes::AsWritten) noexcept;

}  // namespace kvx
