/** What becomes of the samples that a Bayer conversion computes. */
#pragma once

namespace kvx {

/** Which colour is the first sample of a pixel. */
enum class ChannelOrder { RGB, BGR };

struct BayerOutput {
    enum Form {
        Samples,       ///< stored as wide as the source's samples
        RoundedBytes,  ///< scaled by 2^-shift, rounded to nearest even and saturated
        ShiftedBytes   ///< shifted right by `shift`, low byte kept
    };
    Form form;
    int shift = 0;  ///< 0 with Samples, else 2 to 8, and the source's samples are words
};

/** Bytes that a row of the destination has for each pixel. */
enum class SlotBytes {
    AsWritten,  ///< three samples
    Four        ///< three bytes of picture; the rest of the row is zeroed, 4 x width bytes or to the line step
};

}  // namespace kvx
