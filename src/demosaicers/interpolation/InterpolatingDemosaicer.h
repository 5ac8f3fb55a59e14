/** What the interpolating TrueSense demosaicers share: the threads' memory, bands of rows. */
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "demosaicers/frame/TrueSenseDemosaicer.h"
#include "demosaicers/interpolation/HalfRows.h"
#include "framework/Bands.h"

namespace kvx {

/** Large enough that the rows computed twice, at the seams of bands, do not matter; small enough to spread. */
constexpr int kBandRows = 128;

template <class T>
class InterpolatingDemosaicer : public TrueSenseDemosaicer<T> {
public:
    void CleanMemory() noexcept override;

protected:
    InterpolatingDemosaicer(const FrameRules& rules, int bandRows)
        : TrueSenseDemosaicer<T>(rules), m_bandRows(bandRows) {}

    int Reserve() noexcept override;

    /**
     * Runs `body(workspace, begin, end)` for bands of the rows [begin, end), spread over the frame's threads. The
     * caller's thread count stays as it is.
     */
    template <class Body>
    void ForBands(int begin, int end, const Body& body) const noexcept {
        const int rows = end - begin, needed = (rows - 1) / m_bandRows + 1;
        const int threads = std::min(static_cast<int>(m_workspaces.size()), needed);
        const int bands = std::min((needed + threads - 1) / threads * threads, rows);  // the same share for each thread
        kvx::ForBands(begin, end, bands, threads, [&](int thread, int64_t first, int64_t last) {
            body(m_workspaces[thread], static_cast<int>(first), static_cast<int>(last));
        });
    }

    const std::vector<TrueSenseWorkspace>& Workspaces() const {
        return m_workspaces;
    }

private:
    int m_bandRows;
    std::vector<TrueSenseWorkspace> m_workspaces;  // one for each thread that can have a band
    int m_reservedWidth = 0;                       // the working width they have room for
};

}  // namespace kvx
