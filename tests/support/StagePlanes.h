/** The planes at full resolution that the pipeline's public stages make of a mosaic, one stage after the other. */
#pragma once

#include "pipeline/GammaCodes.h"
#include "support/PipelineFrame.h"

namespace kvx::test {

/** Pan in codes, the others 16.16. */
struct StagePlanes {
    std::vector<uint16_t> pan;
    std::vector<int32_t> lowPan, differences[3];

    /** @param raw a mosaic of even sides, those of `p` */
    StagePlanes(std::vector<uint16_t> raw, const ImageProcessParam& p, bool filtersImpulses, bool isCleaned) {
        const int w2 = p.width / 2, h2 = p.height / 2;
        const size_t n = raw.size(), l = n / 4;
        std::vector<uint16_t> pan0(l), pan1(l), colour0(l), colour1(l), panAt0(l), panAt1(l), lowColour(l);
        std::vector<int32_t> low(l), difference(l);
        pan.resize(n);
        for (auto* plane : {&lowPan, &differences[0], &differences[1], &differences[2]}) plane->resize(n);

        Succeed(Alg_SubtractDarkFloor(reinterpret_cast<uint8_t*>(raw.data()), p.width, p.height, p.darkFloor,
                                      raw.data(), nullptr));
        if (p.globalGain > 1)
            Succeed(ApplyGlobalGain(reinterpret_cast<int16_t*>(raw.data()), static_cast<int>(n), p.globalGain));
        Succeed(Alg_WhiteBalance(raw.data(), p.width, p.height, p.cfaPattern, p.redBalance, p.greenBalance,
                                 p.blueBalance, p.panBalance, pan0.data(), pan1.data(), colour0.data(), colour1.data(),
                                 nullptr));
        WithScratch(n, [&] {
            return Alg_InterpolatePan(pan0.data(), pan1.data(), p.width, p.height, pan.data(), panAt0.data(),
                                      panAt1.data(), nullptr);
        });
        const auto codeOfMean = [](int a, int b) { return Linear12toGamma10[(a + b + 1) / 2]; };
        for (size_t k = 0; k < l; ++k) {
            const uint16_t* cell = &pan[k / w2 * 2 * p.width + k % w2 * 2];
            low[k] = (cell[0] + cell[1] + cell[p.width] + cell[p.width + 1]) * (kCodeUnit / 4);
            difference[k] = (codeOfMean(colour0[k], colour1[k]) - codeOfMean(panAt0[k], panAt1[k])) * kCodeUnit;
        }
        if (filtersImpulses)
            WithScratch(n, [&] { return Alg_ImpulseFilter(difference.data(), 5, w2, h2, 2, nullptr); });
        for (size_t k = 0; k < l; ++k) lowColour[k] = static_cast<uint16_t>(CodeOf(low[k] + difference[k]));
        if (isCleaned) {
            WithScratch(n, [&] {
                return Alg_LowColorDiffClean(lowColour.data(), difference.data(), w2, h2, p.globalGain, p.redBalance,
                                             p.greenBalance, p.blueBalance, p.analogGain, p.ISOAnalogGain,
                                             p.ISOColorSlope, p.ISOColorIntercept, p.colorSigma[0], p.colorSigma[1],
                                             p.colorSigma[2], p.colorRadius[0], p.colorRadius[1], p.colorRadius[2],
                                             nullptr);
            });
            WithScratch(n, [&] {
                return Alg_LowPanClean(low.data(), w2, h2, p.globalGain, p.analogGain, p.ISOAnalogGain, p.ISOPanSlope,
                                       p.ISOPanIntercept, p.panSigma[0], p.panSigma[1], p.panSigma[2],
                                       p.panRadius[0], p.panRadius[1], p.panRadius[2], nullptr);
            });
        }
        WithScratch(n, [&] {
            return Alg_LowColorDiffUpSample(difference.data(), w2, h2, p.cfaPattern, differences[0].data(),
                                            differences[1].data(), differences[2].data(), nullptr);
        });
        WithScratch(n, [&] { return Alg_LowPanUpSample(low.data(), w2, h2, lowPan.data(), nullptr); });
        if (p.monoEnable == 1)
            for (auto& plane : differences) std::ranges::fill(plane, 0);
    }

private:
    template <class Stage>
    static void WithScratch(size_t n, const Stage& stage) {
        const Scratch scratch(4 * n, 4 * n);
        Succeed(stage());
    }
};

}  // namespace kvx::test
