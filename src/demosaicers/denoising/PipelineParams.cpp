#include "demosaicers/denoising/PipelineParams.h"

#include <algorithm>
#include <climits>

#include "pipeline/CfaTables.h"
#include "pipeline/ToneScales.h"

namespace kvx {
namespace {

constexpr int32_t Int32(int64_t value) {
    return static_cast<int32_t>(std::clamp<int64_t>(value, INT_MIN, INT_MAX));
}

/** Copies real parameters that the record holds one after the other. */
template <size_t Count>
void CopyReals(const double* first, float (&to)[Count]) {
    std::transform(first, first + Count, to, [](double value) { return static_cast<float>(value); });
}

/** The pipeline's own table of the base tile names the same kinds of sites. */
constexpr bool IsBaseTile(const SiteTable& table) {
    for (int row = 0; row < kTileSize; ++row)
        for (int column = 0; column < kTileSize; ++column) {
            constexpr char kinds[] = "WRGB";
            const int32_t code = table[row][column];
            if (kinds[(code - kPanEven) / 2] != KindAt(row, column) || (code - kPanEven) % 2 != row % 2) return false;
        }
    return true;
}
static_assert(IsBaseTile(*s_siteTables[kBaseTilePattern]));

}  // namespace

ImageProcessParam PipelineParamOf(const WorkingArea& area, const tagTrueSenseParam& params) noexcept {
    ImageProcessParam to{};
    to.width = area.width;
    to.height = area.height;
    to.cfaPattern = kBaseTilePattern;
    to.monoEnable = Int32(params.monoEnable);
    to.darkFloor = Int32(params.darkFloor);
    to.redBalance = static_cast<float>(params.redGain);
    to.greenBalance = static_cast<float>(params.greenGain);
    to.blueBalance = static_cast<float>(params.blueGain);
    to.panBalance = static_cast<float>(params.panGain);
    to.globalGain = static_cast<float>(params.globalGain);
    to.analogGain = static_cast<float>(params.analogGain);
    CopyReals(&params.ISOAnalogGain_0, to.ISOAnalogGain);
    CopyReals(&params.ISOPanSlope_0, to.ISOPanSlope);
    CopyReals(&params.ISOPanIntercept_0, to.ISOPanIntercept);
    CopyReals(&params.ISOColorSlope_0, to.ISOColorSlope);
    CopyReals(&params.ISOColorIntercept_0, to.ISOColorIntercept);
    CopyReals(&params.panSigma0, to.panSigma);
    CopyReals(&params.colorSigma0, to.colorSigma);
    CopyReals(&params.RR, to.colorMatrix);
    CopyReals(&params.sharpenParam, to.sharpness);
    if (params.sharpnessEnable == 0) to.sharpness[1] = 0;  // maxSharpen; the detail itself is added back all the same
    const int64_t panRadii[] = {params.panRadius0, params.panRadius1, params.panRadius2};
    const int64_t colorRadii[] = {params.colorRadius0, params.colorRadius1, params.colorRadius2};
    std::transform(panRadii, panRadii + 3, to.panRadius, Int32);
    std::transform(colorRadii, colorRadii + 3, to.colorRadius, Int32);
    return to;
}

std::array<uint16_t, KVX_TONE_TABLE_SIZE> ByteToneOf(const uint16_t* toneTable) noexcept {
    if (!toneTable) return Tonescale12;
    std::array<uint16_t, KVX_TONE_TABLE_SIZE> tone;
    std::transform(toneTable, toneTable + tone.size(), tone.begin(),
                   [](uint16_t value) { return static_cast<uint16_t>(std::min(value >> 4, 255)); });
    return tone;
}

}  // namespace kvx
