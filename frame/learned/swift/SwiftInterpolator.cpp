#include "frame/learned/swift/SwiftInterpolator.h"

#include <algorithm>

#include "frame/base/Team.h"
#include "frame/learned/swift/SwiftStrip.h"

namespace kvx::frame {
namespace {

constexpr uint32_t kBandRows = 64;  // of a thread: six rows around a band are read twice

}  // namespace

SwiftInterpolator::SwiftInterpolator(Family family) : m_family(family) {}
SwiftInterpolator::~SwiftInterpolator() = default;

void SwiftInterpolator::Release() noexcept {
    m_strips.clear();
}

uint32_t SwiftInterpolator::Convert(const SourceView& mosaic, const KvxRowSource& source, uint8_t pictureBits,
                                    const KvxPixelSink& pixels, const std::optional<NoiseLine>&, int threads) {
    const SwiftFrame frame(SwiftFiltersFor(m_family), mosaic, source, pictureBits, pixels);
    uint32_t bands = (mosaic.height + kBandRows - 1) / kBandRows;
    const int team = TeamSize(bands, threads);
    bands = team == 1 ? 1 : (bands + team - 1) / team * team;  // as many for each thread
    const uint32_t bandRows = (mosaic.height + bands - 1) / bands;
    // Strips of equal width; a multiple of any vector.
    const size_t width = mosaic.width, strips = (width + SwiftStrip::kColumns - 1) / SwiftStrip::kColumns;
    const size_t columns = (width / strips + 63) / 64 * 64;
    while (m_strips.size() < static_cast<size_t>(team)) m_strips.push_back(std::make_unique<SwiftStrip>());

    ForRows(bands, team, [&](uint32_t band, int thread) {
        const int64_t top = int64_t{band} * bandRows, bottom = std::min<int64_t>(mosaic.height, top + bandRows);
        if (top >= bottom) return;
        for (size_t left = 0; left < width; left += columns)
            m_strips[thread]->Run(frame, top, bottom, static_cast<int64_t>(left), std::min(columns, width - left));
    });
    return 0;
}

}  // namespace kvx::frame
