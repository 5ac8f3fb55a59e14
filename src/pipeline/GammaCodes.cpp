#include "pipeline/GammaCodes.h"

namespace kvx {
namespace {

/** ln x for x from 1 to 16: constant expressions have no std::log. */
constexpr double Ln(double x) {
    constexpr double ln2 = 0.69314718055994530942;
    double result = 0;
    while (x > 1.5) {
        x /= 2;
        result += ln2;
    }
    const double t = (x - 1) / (x + 1);
    double power = t;
    for (int n = 1; n < 24; n += 2, power *= t * t) result += 2 * power / n;
    return result;
}

constexpr double GammaOf(double linear) {
    return linear <= kGammaKnee ? linear
                                : kGammaKnee + kGammaScale * Ln((linear + kGammaOffset) / (kGammaKnee + kGammaOffset));
}

constexpr auto MakeLinear12toGamma10() {
    std::array<int32_t, kLinearValues> table{};
    for (int i = 0; i < kLinearValues; ++i) table[i] = static_cast<int32_t>(GammaOf(i) + 0.5);
    return table;
}

/** The linear value whose code, not rounded, is nearest. */
constexpr auto MakeGamma10toLinear12() {
    std::array<int32_t, kGammaCodes> table{};
    int linear = 0;
    for (int code = 0; code < kGammaCodes; ++code) {
        while (linear + 1 < kLinearValues && GammaOf(linear + 0.5) < code) ++linear;
        table[code] = linear;
    }
    return table;
}

}  // namespace

constexpr std::array<int32_t, kGammaCodes> Gamma10toLinear12 = MakeGamma10toLinear12();
constexpr std::array<int32_t, kLinearValues> Linear12toGamma10 = MakeLinear12toGamma10();

}  // namespace kvx
