/** The planes at full resolution that the pipeline's stages make of a mosaic, one stage after the other. */
#pragma once

#include <functional>

#include "support/PipelineFrame.h"
#include "support/PlainPan.h"

namespace kvx::test {

/** Pan in codes, the others 16.16. */
struct StagePlanes {
    std::vector<uint16_t> pan;
    std::vector<int32_t> lowPan, differences[3];

    static int CodeOf(int32_t value) {
        return value < 0 ? 0 : std::min(value / 65536, 1023);
    }

    /** @param raw a mosaic of even sides, those of `p` */
    StagePlanes(std::vector<uint16_t> raw, const ImageProcessParam& p, bool filtersImpulses, bool isCleaned) {
        const int w2 = p.width / 2, h2 = p.height / 2;
        const size_t n = raw.size(), l = n / 4;
        std::vector<uint16_t> pan0(l), pan1(l), colour0(l), colour1(l), lowColour(l);
        std::vector<int32_t> low(l), difference(l);
        for (auto* plane : {&lowPan, &differences[0], &differences[1], &differences[2]}) plane->resize(n);

        Succeed(Alg_SubtractDarkFloor(reinterpret_cast<uint8_t*>(raw.data()), p.width, p.height, p.darkFloor,
                                      raw.data(), nullptr));
        if (p.globalGain > 1)
            Succeed(ApplyGlobalGain(reinterpret_cast<int16_t*>(raw.data()), static_cast<int>(n), p.globalGain));
        Succeed(Alg_WhiteBalance(raw.data(), p.width, p.height, p.cfaPattern, p.redBalance, p.greenBalance,
                                 p.blueBalance, p.panBalance, pan0.data(), pan1.data(), colour0.data(), colour1.data(),
                                 nullptr));
        std::vector<int> codes(n);
        for (int row = 0; row < p.height; ++row)
            for (int column = row % 2; column < p.width; column += 2)
                codes[size_t(row) * p.width + column] =
                    Linear12toGamma10[(row % 2 ? pan1 : pan0)[size_t(row / 2) * w2 + column / 2]];
        int passes = 0;
        for (const int radius : p.panRadius) passes += radius > 0;
        for (const int radius : p.colorRadius) passes += radius > 0;
        codes = PlainPan(p.width, p.height, codes, passes > 0).codes;
        pan.assign(codes.begin(), codes.end());
        const auto codeOfMean = [](int a, int b) { return Linear12toGamma10[(a + b + 1) / 2]; };
        for (size_t k = 0; k < l; ++k) {
            const uint16_t *upper = &pan[k / w2 * 2 * p.width + k % w2 * 2], *lower = upper + p.width;
            low[k] = (upper[0] + upper[1] + lower[0] + lower[1]) * 16384;
            difference[k] = (codeOfMean(colour0[k], colour1[k]) -
                             codeOfMean(Gamma10toLinear12[upper[1]], Gamma10toLinear12[lower[0]])) *
                            65536;
        }
        if (filtersImpulses)
            WithScratch(n, [&] { return Alg_ImpulseFilter(difference.data(), 5, w2, h2, 2, nullptr); });
        for (size_t k = 0; k < l; ++k) lowColour[k] = static_cast<uint16_t>(CodeOf(low[k] + difference[k]));
        if (isCleaned) {
            WithScratch(n, [&] {
                const float* sigma = p.colorSigma;
                const int32_t* radius = p.colorRadius;
                return Alg_LowColorDiffClean(lowColour.data(), difference.data(), w2, h2, p.globalGain, p.redBalance,
                                             p.greenBalance, p.blueBalance, p.analogGain, p.ISOAnalogGain,
                                             p.ISOColorSlope, p.ISOColorIntercept, sigma[0], sigma[1], sigma[2],
                                             radius[0], radius[1], radius[2], nullptr);
            });
            WithScratch(n, [&] {
                const float* sigma = p.panSigma;
                const int32_t* radius = p.panRadius;
                return Alg_LowPanClean(low.data(), w2, h2, p.globalGain, p.analogGain, p.ISOAnalogGain, p.ISOPanSlope,
                                       p.ISOPanIntercept, sigma[0], sigma[1], sigma[2], radius[0], radius[1], radius[2],
                                       nullptr);
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

    /** How display values follow from linear ones, and what that means for sharpening. */
    struct Display {
        std::function<int(int linear)> colour, detail;
        int white, toByte;      // the largest value; right shift to a byte
        float scaleOfActivity;  // to that of bytes
    };

    /** The finished pixels, three values each. Wants no scratch memory. */
    std::vector<int> Finished(const ImageProcessParam& p, const Display& display) const {
        const auto& [sharpen, most, bright, dark] = p.sharpness;
        const int width = p.width, height = p.height;
        std::vector<int32_t> low, smooth;
        for (const int32_t value : lowPan) low.push_back(display.detail(Gamma10toLinear12[CodeOf(value)]));
        for (const int32_t value : low) smooth.push_back(value * 65536);
        constexpr float kernel[] = {0.25F, 0, 0.5F, 0, 0.25F};
        for (const int direction : {0, 1})
            WithScratch(low.size(),
                        [&] { return Alg_Convolve1D(smooth.data(), width, height, kernel, 5, direction, nullptr); });
        std::vector<int> finished;
        for (int at = 0; at < width * height; ++at) {
            const int row = at / width, column = at % width, level = smooth[at] / 65536;
            int activity = 2 * std::abs(low[at]);
            if (row > 0 && row < height - 1 && column > 0 && column < width - 1) {
                const int32_t *here = &low[at], *up = here - width, *down = here + width;
                activity =
                    std::abs(up[0] + down[0] - here[-1] - here[1]) + std::abs(up[-1] + down[1] - up[1] - down[-1]);
            }
            const auto rootOf = [&](int value) {
                return std::sqrt(float(std::clamp(value >> display.toByte, 0, 255)));
            };
            const auto edgeScale = float((32.0 - rootOf(level)) * sharpen * 0.03125);
            const auto share = float(rootOf(low[at]) * 0.03125 * (bright - dark) + dark);
            const float ratio = float(activity) * display.scaleOfActivity / edgeScale - 1.0F;
            const float positive = 0 > ratio ? 0 : ratio, amount = positive < most ? positive : most;
            const int fine = display.detail(Gamma10toLinear12[pan[at]]);
            const float detail = float(fine - low[at]) * share + float(low[at] - level) * amount;
            float linear[3];
            for (int channel = 0; channel < 3; ++channel)
                linear[channel] = float(Gamma10toLinear12[CodeOf(lowPan[at] + differences[channel][at])]);
            for (int channel = 0; channel < 3; ++channel) {
                const float* m = p.colorMatrix + 3 * channel;
                const int value = Within(m[0] * linear[0] + m[1] * linear[1] + m[2] * linear[2], 4095);
                finished.push_back(Within(float(display.colour(value)) + detail, display.white));
            }
        }
        return finished;
    }

private:
    /** Truncated; what is not a number gives 0. */
    static int Within(float value, int most) {
        return value > 0 ? int(std::min(value, float(most))) : 0;
    }
    template <class Stage>
    static void WithScratch(size_t n, const Stage& stage) {
        const Scratch scratch(4 * n, 4 * n);
        Succeed(stage());
    }
};

}  // namespace kvx::test
