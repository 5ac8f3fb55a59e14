/** Pan interpolation, from the quincunx of pan sites to pan at every site: the stage, and its arithmetic. */
#pragma once

#include <cstdint>

#include "KvxDemosaicing/KvxPipeline.h"

namespace kvx {

/** Alg_InterpolatePan(), whose noise filter can be switched off. */
int32_t InterpolatePan(const uint16_t* pan0, const uint16_t* pan1, int32_t width, int32_t height, bool isFiltered,
                       uint16_t* pan, uint16_t* panAt0, uint16_t* panAt1, LogText_t* log) noexcept;

/** The row or column within [0, length) for any `index`: the plane is mirrored at its border. `length` is 2 or more. */
constexpr int32_t MirroredIndex(int32_t index, int32_t length) {
    while (index < 0 || index >= length) index = index < 0 ? -index : 2 * (length - 1) - index;
    return index;
}

/** Added to sums of gradients: smaller ones say nothing about direction. */
constexpr int32_t kGradientGuard = 6;

/** The mean of differences from a centre, the centre's own 0 among them, by Epanechnikov's weights. */
class PanMean {
public:
    /** @param threshold from which on a difference does not count; positive */
    explicit constexpr PanMean(float threshold) : m_widest(threshold * threshold), m_weights(m_widest) {}

    constexpr void Add(int32_t difference) {
        const auto d = static_cast<float>(difference);
        const float weight = m_widest - d * d;
        if (weight <= 0) return;
        m_sum += weight * d;
        m_weights += weight;
    }
    /** The centre moved by the mean, rounded. */
    constexpr int32_t About(int32_t centre) const {
        return static_cast<int32_t>(static_cast<float>(centre) + m_sum / m_weights + 0.5F);
    }

private:
    float m_widest, m_weights, m_sum = 0;
};

/** A four-tap estimate along a line, times 16. */
constexpr int32_t AlongLine(int32_t near0, int32_t near1, int32_t far0, int32_t far1) {
    return 9 * (near0 + near1) - (far0 + far1);
}

/**
 * Two estimates times 16, weighted by the inverse squares of the gradients along them, as a code.
 * (Weights as in Pekkucuksen and Altunbasak, "Gradient based threshold free color filter array interpolation", 2010.)
 */
constexpr int32_t Weighted(int32_t across, int32_t down, int32_t gradientAcross, int32_t gradientDown) {
    const auto a = static_cast<float>(gradientDown + kGradientGuard);
    const auto d = static_cast<float>(gradientAcross + kGradientGuard);
    const float weightAcross = a * a, weightDown = d * d;
    const float sum = static_cast<float>(across) * weightAcross + static_cast<float>(down) * weightDown;
    const float code = sum / (weightAcross + weightDown) * 0.0625F + 0.5F;
    return code < 0 ? 0 : code > 1023 ? 1023 : static_cast<int32_t>(code);
}

}  // namespace kvx
