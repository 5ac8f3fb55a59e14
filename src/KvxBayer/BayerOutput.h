/** Output format of a Bayer conversion. */
#pragma once

namespace kvx {

/** Which colour is the first sample of a pixel. */
enum class ChannelOrder { RGB, BGR };

/** What a destination row has for each pixel. */
enum class BayerPixel {
    ThreeSamples,
    ThreeThenZeros,  ///< three bytes of picture; the rest of the row, to 4 x width bytes or the line step, is zeroed
    WithAlpha        ///< three bytes and 255; for outputs of bytes only
};

struct BayerOutput {
    enum Form {
        Samples,       ///< as wide as the source's samples
        RoundedBytes,  ///< scaled by 2^-shift, rounded to nearest even and saturated
        ShiftedBytes   ///< shifted right by `shift`; the low byte is kept
    };
    Form form = Samples;
    int shift = 0;  ///< 0 for Samples, else 2 to 8; the source's samples are words then
    BayerPixel pixel = BayerPixel::ThreeSamples;

    int SamplesPerPixel() const {
        return pixel == BayerPixel::WithAlpha ? 4 : 3;
    }
};

}  // namespace kvx
