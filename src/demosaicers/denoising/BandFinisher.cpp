#include "demosaicers/denoising/BandFinisher.h"

#include <algorithm>

#include "demosaicers/frame/PixelRow.h"
#include "pipeline/GammaCodes.h"

namespace kvx {
namespace {

constexpr int kReachOfSharpness = 2;  // rows

/** 16 bits: lookups touch fewer cache lines. */
const std::array<uint16_t, kGammaCodes> s_linear = [] {
    std::array<uint16_t, kGammaCodes> table;
    std::copy(Gamma10toLinear12.begin(), Gamma10toLinear12.end(), table.begin());
    return table;
}();

}  // namespace

bool BandFinisher::Reserve(int width) noexcept {
    m_width = static_cast<size_t>(width);
    return m_upSampler.Reserve(width) && m_words.Reserve(width, kRing, 0, 0) &&
           m_values.Reserve(width, 3 * kRing + 8, 0, 0) && m_floats.Reserve(width, 3, 0, 0.0F);
}

void BandFinisher::Finish(const TrueSenseFrame& frame, const PipelinePlanes& planes, const LowPlanes& low,
                          const FinishSettings& settings, int begin, int end) noexcept {
    const WorkingArea& area = frame.area;
    const int reach = settings.isSharpened ? kReachOfSharpness : 0;
    int prepared = std::max(begin - reach, 0);
    m_upSampler.Begin(low, prepared);
    for (int row = begin; row < end; ++row) {
        for (; prepared <= std::min(row + reach, area.height - 1); ++prepared) PrepareRow(settings, prepared);
        ColorCorrection(settings, row);
        if (settings.hasDetail) AddDetailOf(settings, planes, row);
        StorePixelRow(frame, row - area.region.row,
                      {Colour(0) + area.region.column, Colour(1) + area.region.column, Colour(2) + area.region.column},
                      static_cast<size_t>(area.region.width), frame.outputShift);
    }
}

void BandFinisher::PrepareRow(const FinishSettings& settings, int row) {
    const int16_t* codes = LowCodes(row);
    m_upSampler.LowPanUpSample(row, LowPan(row), LowCodes(row));
    if (!settings.hasDetail) return;
    uint16_t* display = Display(row);
    for (size_t k = 0; k < m_width; ++k) display[k] = settings.display[codes[k]];
    if (settings.isSharpened) SmoothAcross(display, m_width, Smooth(row));
}

void BandFinisher::ColorCorrection(const FinishSettings& settings, int row) {
    std::array<const int16_t*, 3> codes = {LowCodes(row), LowCodes(row), LowCodes(row)};
    if (!settings.isMono) {
        std::array<int16_t*, 3> own;
        for (int channel = 0; channel < 3; ++channel)
            codes[channel] = own[channel] = reinterpret_cast<int16_t*>(Colour(channel));
        m_upSampler.LowColorDiffUpSample(row, LowPan(row), own);
    }
    for (int channel = 0; channel < 3; ++channel)
        for (size_t k = 0; k < m_width; ++k) Linear(channel)[k] = s_linear[codes[channel][k]];
    CorrectColour({Linear(0), Linear(1), Linear(2)}, settings.matrix.data(), m_width,
                  {Colour(0), Colour(1), Colour(2)});
    for (int channel = 0; channel < 3; ++channel) {
        uint16_t* colour = Colour(channel);
        for (size_t k = 0; k < m_width; ++k) colour[k] = settings.tone[colour[k]];
    }
}

void BandFinisher::AddDetailOf(const FinishSettings& settings, const PipelinePlanes& planes, int row) {
    const int toByte = settings.isDeep ? 4 : 0;
    const int16_t* panCodes = planes.fullPan.Row(row);
    uint16_t *pan = Pan(), *low = Display(row);
    float *noiseGain = m_floats.Row(1), *detail = m_floats.Row(2);
    for (size_t k = 0; k < m_width; ++k) {
        pan[k] = settings.display[panCodes[k]];
        noiseGain[k] = settings.sharpness.noiseGain[low[k] >> toByte];
    }
    if (settings.isSharpened)
        Sharpness(settings, planes, row, detail);
    else
        FindPlainDetail(pan, low, noiseGain, m_width, detail);
    for (int channel = 0; channel < 3; ++channel)
        AddDetail(detail, settings.isDeep ? 4095 : 255, m_width, Colour(channel));
}

void BandFinisher::Sharpness(const FinishSettings& settings, const PipelinePlanes& planes, int row, float* detail) {
    const int last = planes.height - 1;
    const bool hasNext = row > 0 && row < last;
    const bool hasAfterNext = row > 1 && row < last - 1;
    const SharpnessRow rows = {.pan = Pan(),
                               .low = Display(row),
                               .lowUp = hasNext ? Display(row - 1) : nullptr,
                               .lowDown = hasNext ? Display(row + 1) : nullptr,
                               .smooth = Smooth(row),
                               .smoothUp = hasAfterNext ? Smooth(row - 2) : nullptr,
                               .smoothDown = hasAfterNext ? Smooth(row + 2) : nullptr,
                               .isDeep = settings.isDeep};
    const int toByte = settings.isDeep ? 4 : 0;
    uint16_t* levels = Levels();
    float *edgeScale = m_floats.Row(0), *noiseGain = m_floats.Row(1);
    SmoothDown(rows, m_width, levels);
    for (size_t k = 0; k < m_width; ++k) edgeScale[k] = settings.sharpness.edgeScale[levels[k] >> toByte];
    FindDetail(rows, levels, edgeScale, noiseGain, settings.maxSharpen, m_width, detail);
}

}  // namespace kvx
