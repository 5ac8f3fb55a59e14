#include "demosaicers/interpolation/PanAtColourSites.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/interpolation/PanAtColourSites.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "demosaicers/interpolation/TrueSenseLanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {

template <bool kBorder, class Lane>
void Complete(const Neighbours<Lane>& pan, size_t sites, const HalfRows<Lane>& row) {
    const hn::ScalableTag<Lane> d;
    for (size_t j = 0; j < sites; j += hn::Lanes(d)) {
        const Four about(d, pan, j);
        const auto value = kBorder ? about.Mean() : about.MeanOfPair(about.IsHorizontal());
        hn::StoreU(value, d, row.panAtColour + j);
        hn::StoreU(hn::Sub(value, hn::LoadU(d, row.difference + j)), d, row.difference + j);
    }
}

template <class Lane>
void CompleteRow(const Neighbours<Lane>& pan, bool isBorder, size_t borderSite, size_t sites,
                 const HalfRows<Lane>& row) {
    const Lane raw = row.difference[borderSite];
    (isBorder ? Complete<true, Lane> : Complete<false, Lane>)(pan, sites, row);

    const int sum = pan.left[borderSite] + pan.right[borderSite] + pan.up[borderSite] + pan.down[borderSite];
    row.panAtColour[borderSite] = static_cast<Lane>(sum >> 2);
    row.difference[borderSite] = static_cast<Lane>((sum >> 2) - raw);
}

constexpr auto& CompleteRow16 = CompleteRow<int16_t>;
constexpr auto& CompleteRow32 = CompleteRow<int32_t>;

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(CompleteRow16);
HWY_EXPORT(CompleteRow32);

void CompletePanAtColourSites(const Neighbours<int16_t>& pan, bool isBorder, size_t borderSite, size_t sites,
                              const HalfRows<int16_t>& row) {
    HWY_DYNAMIC_DISPATCH(CompleteRow16)(pan, isBorder, borderSite, sites, row);
}
void CompletePanAtColourSites(const Neighbours<int32_t>& pan, bool isBorder, size_t borderSite, size_t sites,
                              const HalfRows<int32_t>& row) {
    HWY_DYNAMIC_DISPATCH(CompleteRow32)(pan, isBorder, borderSite, sites, row);
}

}  // namespace kvx
#endif
