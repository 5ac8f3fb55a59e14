#include "demosaicers/interpolation/ColourDifferences.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/interpolation/ColourDifferences.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "demosaicers/interpolation/TrueSenseLanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {

template <class Lane>
void Diagonals(const HalfRows<Lane>& up, const HalfRows<Lane>& down, size_t sites, const HalfRows<Lane>& row) {
    const hn::ScalableTag<Lane> d;
    for (size_t j = 0; j < sites; j += hn::Lanes(d)) {
        const auto mean = MeanOfFour(hn::LoadU(d, up.difference + j - 1), hn::LoadU(d, up.difference + j + 1),
                                     hn::LoadU(d, down.difference + j - 1), hn::LoadU(d, down.difference + j + 1));
        hn::StoreU(StoredDifference(d, hn::LoadU(d, row.panAtColour + j), mean), d, row.diagonal + j);
    }
}

/**
 * Green sites are the odd ones or the even ones; `Own` is the row's other colour, `Other` the one that it lacks. Lanes
 * of both kinds are computed alike and then picked.
 */
template <bool kGreenIsOdd, class Lane>
void Differences(const HalfRows<Lane>& up, const HalfRows<Lane>& down, size_t sites, const HalfRows<Lane>& row,
                 Lane* own, Lane* other) {
    const hn::ScalableTag<Lane> d;
    const auto pick = [](auto atGreen, auto elsewhere) {
        return kGreenIsOdd ? hn::OddEven(atGreen, elsewhere) : hn::OddEven(elsewhere, atGreen);
    };
    for (size_t j = 0; j < sites; j += hn::Lanes(d)) {
        const auto measured = hn::LoadU(d, row.difference + j);
        const auto diagonal = hn::LoadU(d, row.diagonal + j);
        const auto pan = hn::LoadU(d, row.panAtColour + j);
        const auto horizontal = hn::Add(hn::LoadU(d, row.difference + j - 1), hn::LoadU(d, row.difference + j + 1));
        const auto vertical = hn::Add(hn::LoadU(d, up.difference + j), hn::LoadU(d, down.difference + j));
        const auto diagonals = hn::Add(hn::LoadU(d, row.diagonal + j - 1), hn::LoadU(d, row.diagonal + j + 1));
        const auto diagonalsOfRows = hn::Add(hn::LoadU(d, up.diagonal + j), hn::LoadU(d, down.diagonal + j));
        const auto mean = [&](auto a, auto b) { return StoredDifference(d, pan, hn::ShiftRight<2>(hn::Add(a, b))); };
        hn::StoreU(pick(measured, mean(horizontal, vertical)), d, row.green + j);
        hn::StoreU(pick(mean(horizontal, diagonalsOfRows), measured), d, own + j);
        hn::StoreU(pick(mean(diagonals, vertical), diagonal), d, other + j);
    }
}

template <class Lane>
void DifferencesOfRow(const HalfRows<Lane>& up, const HalfRows<Lane>& down, size_t sites, bool measuresRed,
                      const HalfRows<Lane>& row) {
    if (measuresRed)
        Differences<false>(up, down, sites, row, row.red, row.blue);
    else
        Differences<true>(up, down, sites, row, row.blue, row.red);
}

constexpr auto& Diagonals16 = Diagonals<int16_t>;
constexpr auto& Diagonals32 = Diagonals<int32_t>;
constexpr auto& Differences16 = DifferencesOfRow<int16_t>;
constexpr auto& Differences32 = DifferencesOfRow<int32_t>;

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(Diagonals16);
HWY_EXPORT(Diagonals32);
HWY_EXPORT(Differences16);
HWY_EXPORT(Differences32);

void CompleteDiagonals(const HalfRows<int16_t>& up, const HalfRows<int16_t>& down, size_t sites,
                       const HalfRows<int16_t>& row) {
    HWY_DYNAMIC_DISPATCH(Diagonals16)(up, down, sites, row);
}
void CompleteDiagonals(const HalfRows<int32_t>& up, const HalfRows<int32_t>& down, size_t sites,
                       const HalfRows<int32_t>& row) {
    HWY_DYNAMIC_DISPATCH(Diagonals32)(up, down, sites, row);
}
void CompleteDifferences(const HalfRows<int16_t>& up, const HalfRows<int16_t>& down, size_t sites, bool measuresRed,
                         const HalfRows<int16_t>& row) {
    HWY_DYNAMIC_DISPATCH(Differences16)(up, down, sites, measuresRed, row);
}
void CompleteDifferences(const HalfRows<int32_t>& up, const HalfRows<int32_t>& down, size_t sites, bool measuresRed,
                         const HalfRows<int32_t>& row) {
    HWY_DYNAMIC_DISPATCH(Differences32)(up, down, sites, measuresRed, row);
}

}  // namespace kvx
#endif
