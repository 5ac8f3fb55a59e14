#include "demosaicers/SlowPipeline.h"

#include <algorithm>
#include <cstdlib>

#include "demosaicers/PipelineParams.h"
#include "pipeline/ColorCorrection.h"
#include "pipeline/Sharpness.h"
#include "pipeline/ToneScales.h"

namespace kvx::test {
namespace {

/** A frame's planes at full resolution: pan in codes, the others 16.16. */
struct Planes {
    int width = 0, height = 0;
    ImageProcessParam param;
    std::vector<uint16_t> pan;
    std::vector<int32_t> lowPan, differences[3];

    Planes(const SlowSource& source, const tagTrueSenseParam& params, bool isCleaned) {
        std::vector<uint16_t> raw = SlowMosaic(source, width, height);
        param = PipelineParamOf({width, height, 0, 0, width, height}, params);
        const int w2 = width / 2, h2 = height / 2;
        const size_t n = raw.size(), l = n / 4;
        std::vector<int32_t> scratch(4 * n), buffer(4 * n);
        const auto free = [&] { Alg_SetScratch(scratch.data(), scratch.data() + 4 * n, buffer.data(), nullptr); };
        free();
        Alg_SubtractDarkFloor(reinterpret_cast<uint8_t*>(raw.data()), width, height, param.darkFloor, raw.data(),
                              nullptr);
        if (param.globalGain > 1)
            ApplyGlobalGain(reinterpret_cast<int16_t*>(raw.data()), static_cast<int>(n), param.globalGain);
        std::vector<uint16_t> quarters[6], lowColour(l);
        for (auto& quarter : quarters) quarter.resize(l);
        auto& [pan0, pan1, colour0, colour1, panAt0, panAt1] = quarters;
        Alg_WhiteBalance(raw.data(), width, height, kBaseTilePattern, param.redBalance, param.greenBalance,
                         param.blueBalance, param.panBalance, pan0.data(), pan1.data(), colour0.data(), colour1.data(),
                         nullptr);
        pan.resize(n);
        Alg_InterpolatePan(pan0.data(), pan1.data(), width, height, pan.data(), panAt0.data(), panAt1.data(), nullptr);
        std::vector<int32_t> low(l), difference(l);
        const auto codeOfMean = [](int a, int b) { return Linear12toGamma10[(a + b + 1) / 2]; };
        for (size_t k = 0; k < l; ++k) {
            const uint16_t* cell = &pan[k / w2 * 2 * width + k % w2 * 2];
            low[k] = (cell[0] + cell[1] + cell[width] + cell[width + 1]) * (kCodeUnit / 4);
            difference[k] = (codeOfMean(colour0[k], colour1[k]) - codeOfMean(panAt0[k], panAt1[k])) * kCodeUnit;
        }
        free();
        if (params.impulseFilterEnable) Alg_ImpulseFilter(difference.data(), 5, w2, h2, 2, nullptr);
        for (size_t k = 0; k < l; ++k) lowColour[k] = static_cast<uint16_t>(CodeOf(low[k] + difference[k]));
        if (isCleaned) {
            Alg_LowColorDiffClean(lowColour.data(), difference.data(), w2, h2, param.globalGain, param.redBalance,
                                  param.greenBalance, param.blueBalance, param.analogGain, param.ISOAnalogGain,
                                  param.ISOColorSlope, param.ISOColorIntercept, param.colorSigma, param.colorRadius,
                                  nullptr);
            free();
            Alg_LowPanClean(low.data(), w2, h2, param.globalGain, param.analogGain, param.ISOAnalogGain,
                            param.ISOPanSlope, param.ISOPanIntercept, param.panSigma, param.panRadius, nullptr);
        }
        free();
        for (auto* plane : {&lowPan, &differences[0], &differences[1], &differences[2]}) plane->resize(n);
        Alg_LowColorDiffUpSample(difference.data(), w2, h2, kBaseTilePattern, differences[0].data(),
                                 differences[1].data(), differences[2].data(), nullptr);
        Alg_LowPanUpSample(low.data(), w2, h2, lowPan.data(), nullptr);
    }
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
    const Planes planes(source, params, false);
    return SlowRegion(source, [&](int row, int column) {
        const size_t at = planes.At(row, column);
        Colour colour{};
        for (int channel = 0; channel < 3; ++channel) {
            const int32_t difference = params.monoEnable == 1 ? 0 : planes.differences[channel][at];
            colour.value[channel] = Gamma10toLinear12[CodeOf(planes.pan[at] * kCodeUnit + difference)];
        }
        return colour;
    });
}

SlowPicture SlowKodakLike(const SlowSource& source, const tagTrueSenseParam& params, bool isDeep) {
    const Planes planes(source, params, true);
    const ImageProcessParam& param = planes.param;
    const auto display = [&](int code) { return ToneOf(params.toneTable, Gamma10toLinear12[code], isDeep); };
    const int toByte = isDeep ? 4 : 0, white = isDeep ? 4095 : 255;
    const float scaleOfActivity = isDeep ? 1 / 16.0F : 1;
    std::vector<int32_t> low, smooth, scratch(planes.pan.size());
    for (const int32_t value : planes.lowPan) {
        low.push_back(display(CodeOf(value)));
        smooth.push_back(low.back() * kCodeUnit);
    }
    Alg_SetScratch(scratch.data(), scratch.data() + scratch.size(), nullptr, nullptr);
    constexpr float kernel[] = {0.25F, 0, 0.5F, 0, 0.25F};
    for (const int direction : {0, 1})
        Alg_Convolve1D(smooth.data(), planes.width, planes.height, kernel, 5, direction, nullptr);
    const SharpnessTables tables = SharpnessTablesOf(param.sharpness[0], param.sharpness[2], param.sharpness[3]);
    const float most = param.sharpness[1];

    return SlowRegion(source, [&](int row, int column) {
        const size_t at = planes.At(row, column);
        const auto beside = [&](int down, int right) { return low[planes.At(row + down, column + right)]; };
        const int level = smooth[at] / kCodeUnit;
        int activity = 2 * low[at];
        if (!planes.IsBorder(row, column))
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
            linear[channel] =
                LinearOf(planes.lowPan[at] + (params.monoEnable == 1 ? 0 : planes.differences[channel][at]));
        Colour colour{};
        for (int channel = 0; channel < 3; ++channel) {
            const int own = ToneOf(params.toneTable, Corrected(param.colorMatrix + 3 * channel, linear), isDeep);
            colour.value[channel] = std::clamp(Truncated(static_cast<float>(own) + detail), 0, white);
        }
        return colour;
    });
}

}  // namespace kvx::test
