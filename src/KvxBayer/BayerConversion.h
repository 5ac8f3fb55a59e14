/** One Bayer frame by algorithm 0 or 2. */
#pragma once

#include <cstdint>

#include "KvxDemosaicing/KvxImage.h"

namespace kvx {

/** What becomes of the samples that a conversion computes. */
struct BayerOutput {
    enum Form {
        Samples,       ///< stored as wide as the source's samples
        RoundedBytes,  ///< scaled by 2^-shift, rounded to nearest even and saturated
        ShiftedBytes   ///< shifted right by `shift`, low byte kept
    };
    Form form;
    int shift = 0;               // 0 with Samples, else 2 to 8
    bool fourByteSlots = false;  ///< ShiftedBytes only: a row is zero-filled to 4 x width bytes, or to its line step
};

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
