#include "demosaicers/interpolation/RowColours.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/interpolation/RowColours.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "demosaicers/interpolation/TrueSenseLanes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {

template <class Lane>
struct Rows {
    const HalfRows<Lane>&up, &row, &down;
    ptrdiff_t left;  // element of the left neighbour of pan site 0 in its row; the right one is the next

    Neighbours<Lane> About(Lane* HalfRows<Lane>::*array) const {
        return {row.*array + left, row.*array + left + 1, up.*array, down.*array};
    }
};

template <bool kBorder, bool kPanIsOdd, class Lane>
void Colours(const Rows<Lane>& rows, size_t sites, int16_t* const planes[3]) {
    using H = HalfRows<Lane>;
    constexpr Lane* H::*differences[] = {&H::red, &H::green, &H::blue};
    const hn::ScalableTag<Lane> d;
    for (size_t j = 0; j < sites; j += hn::Lanes(d)) {
        const Four panAbout(d, rows.About(&H::panAtColour), j);
        const auto pan = hn::LoadU(d, rows.row.pan + j);
        const auto panAtColour = hn::LoadU(d, rows.row.panAtColour + j);
        const auto isHorizontal = panAbout.IsHorizontal();
        for (int channel = 0; channel < 3; ++channel) {
            const Four about(d, rows.About(differences[channel]), j);
            const auto colourOf = [d](auto panValue, auto difference) {
                return Wrapped(d, hn::Sub(panValue, difference));
            };
            const auto atColour = colourOf(panAtColour, hn::LoadU(d, rows.row.*differences[channel] + j));
            const auto atPan =
                kBorder ? MeanOfFour(colourOf(panAbout.left, about.left), colourOf(panAbout.right, about.right),
                                     colourOf(panAbout.up, about.up), colourOf(panAbout.down, about.down))
                        : colourOf(pan, about.MeanOfPair(isHorizontal));
            StoreColumns(d, kPanIsOdd ? atColour : atPan, kPanIsOdd ? atPan : atColour, planes[channel] + 2 * j);
        }
    }
}

/** The border site of a row's pan sites: the first one of an even row, the last one of an odd row. */
template <class Lane>
void BorderColours(const Rows<Lane>& rows, size_t site, int16_t* const colours[3]) {
    using H = HalfRows<Lane>;
    const auto pan = rows.About(&H::panAtColour);
    constexpr Lane* H::*differences[] = {&H::red, &H::green, &H::blue};
    for (int channel = 0; channel < 3; ++channel) {
        const auto difference = rows.About(differences[channel]);
        const auto colour = [site](const Lane* panAt, const Lane* differenceAt) {
            return static_cast<int16_t>(panAt[site] - differenceAt[site]);
        };
        const int sum = colour(pan.left, difference.left) + colour(pan.right, difference.right) +
                        colour(pan.up, difference.up) + colour(pan.down, difference.down);
        *colours[channel] = static_cast<int16_t>(sum >> 2);
    }
}

template <class Lane>
void ColoursOfRow(const HalfRows<Lane>& up, const HalfRows<Lane>& row, const HalfRows<Lane>& down, bool panIsOdd,
                  bool isBorder, size_t sites, int16_t* const planes[3]) {
    const Rows<Lane> rows{up, row, down, panIsOdd ? 0 : -1};
    if (panIsOdd)
        (isBorder ? Colours<true, true, Lane> : Colours<false, true, Lane>)(rows, sites, planes);
    else
        (isBorder ? Colours<true, false, Lane> : Colours<false, false, Lane>)(rows, sites, planes);
    const size_t column = panIsOdd ? 2 * sites - 1 : 0;
    int16_t* const colours[] = {planes[0] + column, planes[1] + column, planes[2] + column};
    BorderColours(rows, column / 2, colours);
}

constexpr auto& Colours16 = ColoursOfRow<int16_t>;
constexpr auto& Colours32 = ColoursOfRow<int32_t>;

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(Colours16);
HWY_EXPORT(Colours32);

void CompleteColours(const HalfRows<int16_t>& up, const HalfRows<int16_t>& row, const HalfRows<int16_t>& down,
                     bool panIsOdd, bool isBorder, size_t sites, int16_t* const planes[3]) {
    HWY_DYNAMIC_DISPATCH(Colours16)(up, row, down, panIsOdd, isBorder, sites, planes);
}
void CompleteColours(const HalfRows<int32_t>& up, const HalfRows<int32_t>& row, const HalfRows<int32_t>& down,
                     bool panIsOdd, bool isBorder, size_t sites, int16_t* const planes[3]) {
    HWY_DYNAMIC_DISPATCH(Colours32)(up, row, down, panIsOdd, isBorder, sites, planes);
}

}  // namespace kvx
#endif
