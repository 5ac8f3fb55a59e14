#include "demosaicers/denoising/SlowPipeline.h"

#include <climits>

#include "pipeline/ToneScales.h"
#include "support/StagePlanes.h"

namespace kvx::test {
namespace {

ImageProcessParam ParamOf(int width, int height, const tagTrueSenseParam& params) {
    const auto within = [](int64_t value) {
        return static_cast<int32_t>(std::clamp<int64_t>(value, INT_MIN, INT_MAX));
    };
    const auto copy = [](const double* from, float* to, int count) {
        for (int i = 0; i < count; ++i) to[i] = static_cast<float>(from[i]);
    };
    ImageProcessParam p{};
    p.width = width;
    p.height = height;
    p.cfaPattern = 1;
    p.monoEnable = within(params.monoEnable);
    p.darkFloor = within(params.darkFloor);
    copy(&params.redGain, &p.redBalance, 1);
    copy(&params.greenGain, &p.greenBalance, 1);
    copy(&params.blueGain, &p.blueBalance, 1);
    copy(&params.panGain, &p.panBalance, 1);
    copy(&params.globalGain, &p.globalGain, 1);
    copy(&params.analogGain, &p.analogGain, 1);
    copy(&params.ISOAnalogGain_0, p.ISOAnalogGain, 5);
    copy(&params.ISOPanSlope_0, p.ISOPanSlope, 5);
    copy(&params.ISOPanIntercept_0, p.ISOPanIntercept, 5);
    copy(&params.ISOColorSlope_0, p.ISOColorSlope, 5);
    copy(&params.ISOColorIntercept_0, p.ISOColorIntercept, 5);
    copy(&params.panSigma0, p.panSigma, 3);
    copy(&params.colorSigma0, p.colorSigma, 3);
    copy(&params.RR, p.colorMatrix, 9);
    copy(&params.sharpenParam, p.sharpness, 4);
    if (!params.sharpnessEnable) p.sharpness[1] = 0;
    const int64_t radii[] = {params.panRadius0,   params.panRadius1,   params.panRadius2,
                             params.colorRadius0, params.colorRadius1, params.colorRadius2};
    for (int i = 0; i < 3; ++i) {
        p.panRadius[i] = within(radii[i]);
        p.colorRadius[i] = within(radii[3 + i]);
    }
    return p;
}

/** The planes of a frame, and where its pixels are in them. */
struct FramePlanes {
    int width = 0, height = 0;
    std::vector<uint16_t> raw;
    ImageProcessParam param;
    StagePlanes planes;

    FramePlanes(const SlowSource& source, const tagTrueSenseParam& params, bool isCleaned)
        : raw(SlowMosaic(source, width, height)),
          param(ParamOf(width, height, params)),
          planes(raw, param, params.impulseFilterEnable != 0, isCleaned) {}

    size_t At(int row, int column) const {
        return static_cast<size_t>(row) * width + column;
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
                Gamma10toLinear12[StagePlanes::CodeOf(planes.pan[at] * 65536 + planes.differences[channel][at])];
        return colour;
    });
}

SlowPicture SlowKodakLike(const SlowSource& source, const tagTrueSenseParam& params, bool isDeep) {
    const FramePlanes frame(source, params, true);
    const auto tone = [&](int linear) { return ToneOf(params.toneTable, linear, isDeep); };
    const std::vector<int> pixels =
        frame.planes.Finished(frame.param, {tone, tone, isDeep ? 4095 : 255, isDeep ? 4 : 0, isDeep ? 1 / 16.0F : 1});
    return SlowRegion(source, [&](int row, int column) {
        const int* pixel = &pixels[3 * frame.At(row, column)];
        return Colour{pixel[0], pixel[1], pixel[2]};
    });
}

}  // namespace kvx::test
