#include "demosaicers/denoising/SlowPipeline.h"

#include <algorithm>
#include <cstdlib>

#include "demosaicers/denoising/PipelineParams.h"
#include "pipeline/ColorCorrection.h"
#include "pipeline/Sharpness.h"
#include "pipeline/ToneScales.h"
#include "support/StagePlanes.h"

namespace kvx::test {
namespace {

/** The planes of a frame, and where its pixels are in them. */
struct FramePlanes {
    int width = 0, height = 0;
    std::vector<uint16_t> raw;
    ImageProcessParam param;
    StagePlanes planes;

    FramePlanes(const SlowSource& source, const tagTrueSenseParam& params, bool isCleaned)
        : raw(SlowMosaic(source, width, height)),
          param(PipelineParamOf({width, height, 0, 0, width, height}, params)),
          planes(raw, param, params.impulseFilterEnable != 0, isCleaned) {}

    size_t At(int row, int column) const {
        return static_cast<size_t>(row) * width + column;
    }
    bool IsBorder(int row, int column) const {
        return row == 0 || column == 0 || row == height - 1 || column == width - 1;
    }
};

int ToneOf(const uint16_t* table, int value, bool isDeep) {
    if (!table) return isDeep ? Tonescale12Table12[value] : Tonescale12[value];
    return isDeep ? std::min<int>(table[value], 4095) : std::min(table[value] >> 4, 255);
}

}  // namespace

SlowPicture SlowSimple(const SlowSource& source, const tagTrueSenseParam& params) {
    const FramePlanes frame(source, params, false);
    const StagePlanes& planes = frame.planes;
    return SlowRegion(source, [&](int row, int column) {
        const size_t at = frame.At(row, column);
        Colour colour{};
        for (int channel = 0; channel < 3; ++channel)
            colour.value[channel] =
                Gamma10toLinear12[CodeOf(planes.pan[at] * kCodeUnit + planes.differences[channel][at])];
        return colour;
    });
}

SlowPicture SlowKodakLike(const SlowSource& source, const tagTrueSenseParam& params, bool isDeep) {
    const FramePlanes frame(source, params, true);
    const StagePlanes& planes = frame.planes;
    const ImageProcessParam& param = frame.param;
    const auto display = [&](int code) { return ToneOf(params.toneTable, Gamma10toLinear12[code], isDeep); };
    const int toByte = isDeep ? 4 : 0, white = isDeep ? 4095 : 255;
    const float scaleOfActivity = isDeep ? 1 / 16.0F : 1;
    std::vector<int32_t> low, smooth;
    for (const int32_t value : planes.lowPan) {
        low.push_back(display(CodeOf(value)));
        smooth.push_back(low.back() * kCodeUnit);
    }
    const Scratch scratch(4 * low.size());
    constexpr float kernel[] = {0.25F, 0, 0.5F, 0, 0.25F};
    for (const int direction : {0, 1})
        Alg_Convolve1D(smooth.data(), frame.width, frame.height, kernel, 5, direction, nullptr);
    const SharpnessTables tables = SharpnessTablesOf(param.sharpness[0], param.sharpness[2], param.sharpness[3]);
    const float most = param.sharpness[1];

    return SlowRegion(source, [&](int row, int column) {
        const size_t at = frame.At(row, column);
        const auto beside = [&](int down, int right) { return low[frame.At(row + down, column + right)]; };
        const int level = smooth[at] / kCodeUnit;
        int activity = 2 * low[at];
        if (!frame.IsBorder(row, column))
            activity = std::abs(beside(-1, 0) + beside(1, 0) - beside(0, -1) - beside(0, 1)) +
                       std::abs(beside(-1, -1) + beside(1, 1) - beside(-1, 1) - beside(1, -1));
        const float strength = static_cast<float>(activity) * scaleOfActivity;
        const float ratio = strength / tables.edgeScale[level >> toByte] - 1.0F;
        const float positive = 0 > ratio ? 0 : ratio, amount = positive < most ? positive : most;
        const float detail =
            static_cast<float>(display(planes.pan[at]) - low[at]) * tables.noiseGain[low[at] >> toByte] +
            static_cast<float>(low[at] - level) * amount;
        float linear[3];
        for (int channel = 0; channel < 3; ++channel)
            linear[channel] = LinearOf(planes.lowPan[at] + planes.differences[channel][at]);
        Colour colour{};
        for (int channel = 0; channel < 3; ++channel) {
            const int own = ToneOf(params.toneTable, Corrected(param.colorMatrix + 3 * channel, linear), isDeep);
            colour.value[channel] = std::clamp(Truncated(static_cast<float>(own) + detail), 0, white);
        }
        return colour;
    });
}

}  // namespace kvx::test
