// The tables of the in-house interpolator, by the low byte of a pixel type.
#include "KvxBayer/BayerPattern.h"
#include "KvxBayer/ipp/DemosaicingIPP.h"
#include "framework/PixelFormats.h"

namespace kvx {
namespace {

using Table = std::array<uint8_t, 256>;

/** `valueOf` each pattern at the formats that have it. */
template <class ValueOf>
constexpr Table ByPattern(const ValueOf& valueOf) {
    Table table{};
    for (const BayerFormats& formats : kBayerFormats)
        for (const uint32_t source : formats.sources) table[source & kRowMask] = valueOf(*PatternOf(source));
    return table;
}

constexpr Table ByOrder() {
    constexpr uint8_t redFirst = 4, blueFirst = 5;
    Table table{};
    table[KvxFormat_RGBa8 & kRowMask] = redFirst;
    table[KvxFormat_BGRa8 & kRowMask] = blueFirst;
    for (const BayerFormats& formats : kBayerFormats) {
        table[formats.rgb & kRowMask] = redFirst;
        table[formats.bgr & kRowMask] = blueFirst;
    }
    return table;
}

}  // namespace

constexpr Table DemosaicingIPP::s_bayerDescG =
    ByPattern([](BayerPattern pattern) -> uint8_t { return IsGreenFirst(pattern) ? 1 : 0; });
constexpr Table DemosaicingIPP::s_bayerDescRB =
    ByPattern([](BayerPattern pattern) -> uint8_t { return IsBlueOnTop(pattern) ? 3 : 2; });
constexpr Table DemosaicingIPP::s_RGBBGRDesc = ByOrder();

}  // namespace kvx
