/** What becomes of the samples that a Bayer conversion computes. */
#pragma once

namespace kvx {

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

}  // namespace kvx
