/** The checks in front of every Bayer conversion. */
#pragma once

#include <cstdint>

#include "KvxBayer/BayerOutput.h"
#include "KvxDemosaicing/KvxImage.h"

namespace kvx {

/**
 * @return 0, or a KvxResultCode: InvalidArgument when the records do not fit each other or their buffers,
 *         ConversionFailed when there are no pixels
 */
uint32_t CheckBayerGeometry(const _KvxImage& src, const _KvxImage& dst, const BayerOutput& output) noexcept;

}  // namespace kvx
