/** One Bayer frame by algorithm 0 or 2. */
#pragma once

#include <cstdint>

#include "KvxBayer/BayerOutput.h"
#include "KvxBayer/BayerPattern.h"
#include "KvxBayer/MosaicRow.h"
#include "KvxDemosaicing/KvxImage.h"

namespace kvx {

/** The order of a destination: blue-first for the BGR formats, red-first for any other. */
ChannelOrder OrderOf(const _KvxImage& dst) noexcept;

/** The rule for green of algorithms 0 and 2. */
GreenRule RuleOf(int algorithm) noexcept;

/**
 * Converts `src` into `dst`, three samples a pixel.
 *
 * The samples are those of OpenCV's conversion with the code that PixelTypeToBayerType() gives, to the bit: computed in
 * one pass because the library's is scalar for words, gives words only, ignores the row padding in its edge-aware form,
 * and refuses words at odd addresses. Any line step will do; nothing is written outside the pixels of `dst`.
 *
 * @return 0, or a KvxResultCode: InvalidArgument when the records do not fit each other or their buffers,
 *         ConversionFailed for a frame without pixels
 */
uint32_t ConvertBayer(const _KvxImage& src, const _KvxImage& dst, BayerPattern pattern, ChannelOrder order,
                      GreenRule rule, const BayerOutput& output, SlotBytes slot = SlotBytes::AsWritten) noexcept;

}  // namespace kvx
