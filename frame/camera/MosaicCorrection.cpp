#include "frame/camera/MosaicCorrection.h"

#include <algorithm>
#include <cmath>

#include "frame/base/Fail.h"
#include "frame/base/Team.h"
#include "frame/camera/CameraFinish.h"
#include "frame/camera/IsolatedSample.h"
#include "frame/camera/ProfileFit.h"
#include "frame/samples/SampleRow.h"

namespace kvx::frame {
namespace {

/** Outliers differ from all their neighbours by more than this many deviations of the noise. */
constexpr double kDeviations = 4;

bool HasSameGeometry(const SourceView& a, const SourceView& b) {
    return a.format == b.format && a.width == b.width && a.height == b.height && a.horMirrored == b.horMirrored &&
           a.verMirrored == b.verMirrored;
}

}  // namespace

void MosaicCorrection::SetProfile(std::shared_ptr<const CameraProfile> profile, std::optional<Site> origin) {
    m_profile = std::move(profile);
    m_origin = origin;
    m_hasMaps = m_profile && HasMaps(*m_profile);
    m_prepared.reset();
}

const uint16_t* MosaicCorrection::Correct(const SourceView& frame, const Balance& balance) {
    Prepare(frame);
    auto* const mosaic = reinterpret_cast<uint16_t*>(m_mosaic.Of(2 * size_t{frame.width} * frame.height));
    ForRows(frame.height, TeamForSamples(uint64_t{frame.width} * frame.height), [&](uint32_t row, int) {
        uint16_t* const samples = mosaic + size_t{row} * frame.width;
        ReadRow(frame, row, samples);
        CorrectRow(OfRow(row), balance.OfRow(row), samples, frame.width);
    });
    RepairDefects(frame, balance, mosaic);
    return mosaic;
}

void MosaicCorrection::Release() noexcept {
    m_prepared.reset();
    m_pattern = {};
    m_shading = {};
    m_listed = m_all = {};
    m_frameNoise = {};
    m_mosaic.Release();
}

void MosaicCorrection::Prepare(const SourceView& frame) {
    if (m_prepared && HasSameGeometry(*m_prepared, frame)) return;
    m_prepared.reset();  // until all is prepared
    m_repair.Prepare(frame);
    m_listed.Clear(frame.width, frame.height);
    m_pattern.clear();
    if (m_hasMaps) {
        const Site origin = m_origin.value_or(Site{});
        m_shading.Prepare(*m_profile, frame, origin.column, origin.row);
        for (const std::vector<Site>* sites : {&m_profile->hotPixels, &m_profile->deadPixels})
            for (const Site& site : *sites) {
                const uint32_t row = site.row - origin.row, column = site.column - origin.column;  // large if outside
                if (row < frame.height && column < frame.width) m_listed.Set(row, column);
            }
        if (!m_profile->darkFrame.empty()) PreparePattern(frame, origin);
    }
    m_prepared = frame;
}

/** What the dark frame has above the black level. */
void MosaicCorrection::PreparePattern(const SourceView& frame, const Site& origin) {
    const double scale = 1u << (16 - m_profile->format->bits);
    m_pattern.reserve(size_t{frame.width} * frame.height);
    for (uint32_t row = 0; row < frame.height; ++row) {
        const uint16_t* const dark =
            m_profile->darkFrame.data() + (size_t{origin.row} + row) * m_profile->width + origin.column;
        for (uint32_t column = 0; column < frame.width; ++column) {
            const auto black = std::lround(scale * m_profile->blackLevel->ofFilters[FilterIndex(frame, row, column)]);
            m_pattern.push_back(static_cast<int16_t>(std::clamp(dark[column] - black, -32768L, 32767L)));
        }
    }
}

RowCorrection MosaicCorrection::OfRow(uint32_t row) const {
    RowCorrection correction{};
    if (!m_pattern.empty()) correction.pattern = m_pattern.data() + size_t{row} * m_prepared->width;
    if (m_hasMaps) m_shading.Apply(row, correction);
    return correction;
}

OutlierLimits MosaicCorrection::LimitsOf(uint32_t row, const RowBalance& balance) const {
    const RowCorrection correction = OfRow(row);
    OutlierLimits limits{};
    limits.gains = correction.lowerWeight < 1 << 14 ? correction.upperGains : correction.lowerGains;
    const double unit = (uint32_t{balance.largest} << balance.leftShift) / 4095.0;  // of a noise line, in 16 bits
    for (uint32_t column = 0; column < 4; ++column) {
        const char filter = StoredFilterAt(*m_prepared, row, column);
        const NoiseLine& line = filter == 'W' || filter == 'Y' ? m_noise.pan : m_noise.colour;
        const double gain = unit * std::ldexp(balance.factors[column], -balance.scale);
        limits.slopes[column] = static_cast<float>(kDeviations * kDeviations * gain * std::max(line.slope, 0.0));
        limits.intercepts[column] =
            static_cast<float>(kDeviations * kDeviations * gain * gain * std::max(line.intercept, m_rounding));
    }
    return limits;
}

void MosaicCorrection::FindDefects(uint32_t row, const RowBalance& balance, const uint16_t* mosaic) {
    const uint32_t width = m_prepared->width, height = m_prepared->height;
    const OutlierLimits limits = LimitsOf(row, balance);
    const auto find = [&](uint32_t distance, uint64_t columns, bool isDiagonal) {
        const bool hasAbove = row >= distance, hasBelow = row + distance < height;
        const uint32_t above = hasAbove ? row - distance : hasBelow ? row + distance : row;
        const uint32_t below = hasBelow ? row + distance : above;
        const auto at = [&](uint32_t index) { return mosaic + size_t{index} * width; };
        FindOutliers({at(above), at(row), at(below), width, distance}, limits, columns, m_all.Row(row));
        m_all.ForEach(row, [&](uint32_t column) {
            const bool isNew = columns >> column % 64 & 1 && !m_listed.Has(row, column);
            if (isNew && !IsIsolated({mosaic, width, height}, row, column, distance, isDiagonal))
                m_all.Unset(row, column);
        });
    };
    if (m_prepared->format.family != Family::TrueSense) {
        find(2, ~uint64_t{0}, false);
        return;
    }
    constexpr uint64_t kEvenColumns = 0x5555555555555555;
    const uint64_t pan = StoredFilterAt(*m_prepared, row, 0) == 'W' ? kEvenColumns : ~kEvenColumns;
    find(2, pan, true);  // the sites next to a clear one have different filters
    find(4, ~pan, false);
}

void MosaicCorrection::RepairDefects(const SourceView& frame, const Balance& balance, uint16_t* mosaic) {
    const int team = TeamForSamples(uint64_t{frame.width} * frame.height);
    m_all = m_listed;
    if (m_searches) {
        const double scale = 4095.0 / White(frame.format);
        m_rounding = scale * scale / 12;
        if (m_profile && m_profile->noise) {
            m_noise = *m_profile->noise;
        } else {
            const RowBalance& levels = balance.OfRow(0);
            const double black = (uint32_t{levels.black[0]} + levels.black[1]) / 2.0 / (1u << levels.leftShift);
            m_noise.pan = m_noise.colour = m_frameNoise.Measure(frame, black);
        }
        ForRows(frame.height, team, [&](uint32_t row, int) { FindDefects(row, balance.OfRow(row), mosaic); });
    }
    ForRows(frame.height, team, [&](uint32_t row, int) { m_repair.Repair(m_all, row, mosaic); });
}

std::vector<uint16_t> CorrectedMosaic(const SourceView& frame, const CameraProfile& profile, const Finish& finish) {
    Validate(frame);
    Validate(profile);
    Finish levels = finish;
    TakeLevels(profile, frame.format, {}, levels);
    CheckLevels(frame, levels);
    MosaicCorrection correction;
    RequireFit(profile, frame);
    correction.SetProfile(std::make_shared<CameraProfile>(profile), std::nullopt);
    const uint16_t* const samples = correction.Correct(frame, Balance(frame, levels, Gains(), 16));
    return {samples, samples + size_t{frame.width} * frame.height};
}

}  // namespace kvx::frame
