/** What the fast noise-reducing demosaicers share: planes, threads, and the steps down to half resolution. */
#pragma once

#include <algorithm>
#include <memory>

#include "demosaicers/denoising/PanNoiseMeter.h"
#include "demosaicers/denoising/PipelineParams.h"
#include "demosaicers/denoising/PipelinePlanes.h"
#include "demosaicers/denoising/RawCells.h"
#include "demosaicers/frame/TrueSenseDemosaicer.h"
#include "framework/Bands.h"

namespace kvx {

/**
 * Every step works on bands of rows, spread over the frame's threads, and ends before the next one begins. The result
 * does not depend on the height of the bands.
 */
template <class T>
class DenoisingDemosaicer : public TrueSenseDemosaicer<T> {
public:
    void CleanMemory() noexcept override;

protected:
    explicit DenoisingDemosaicer(int bandRows) : TrueSenseDemosaicer<T>(kDenoisingRules), m_bandRows(bandRows) {}

    int Reserve() noexcept override;

    /** Makes a thread's own memory ready for rows of this width. @return false without memory */
    virtual bool ReserveThreads(int threads, int width) noexcept = 0;

    /** Full-resolution pan without noise, and half-resolution pan and colour differences. */
    void MakeLowPlanes() noexcept;

    /** Runs `body(thread, begin, end)` for bands of the rows [begin, end), `rows` high or a little lower. */
    template <class Body>
    void ForBands(int begin, int end, int rows, const Body& body) const noexcept {
        const int count = (end - begin - 1) / rows + 1;
        kvx::ForBands(begin, end, count, std::min(m_threads, count), [&](int thread, int64_t first, int64_t last) {
            body(thread, static_cast<int>(first), static_cast<int>(last));
        });
    }

    const ImageProcessParam& Param() const {
        return m_param;
    }
    PipelinePlanes& Planes() {
        return m_planes;
    }
    int BandRows() const {
        return m_bandRows;
    }

private:
    /** Black level, gain and balance of all samples; pan codes and colour codes. */
    void CalculateWhiteBalance() noexcept;
    PanThresholds MeasurePanNoise() noexcept;
    void FilterPan(const PanThresholds& thresholds) noexcept;
    void InterpolatePan() noexcept;
    GradientRow Gradients(int thread, int row) noexcept;
    void SumGradientsOf(int thread, int row) noexcept;
    void GenerateLow(const CellPan& pan, int cellRow) noexcept;
    void CalculateImpulseFilter() noexcept;

    static constexpr int kRing = 8, kArrays = 4;  // of rows of gradients, and what a row consists of
    static constexpr int kGradientRows = kRing * kArrays + 2, kCodeRows = 2;

    int m_bandRows, m_threads = 0;
    ImageProcessParam m_param{};
    RawTables m_rawTables{};
    PipelinePlanes m_planes;
    int m_reservedThreads = 0;
    // For each thread: two rows of samples, a noise meter, rows of gradients, of codes, of thresholds.
    size_t m_lineStep = 0;
    std::unique_ptr<uint16_t[]> m_lines;
    std::unique_ptr<PanNoiseMeter[]> m_meters;
    PaddedPlane<int16_t> m_gradients, m_codes;
    PaddedPlane<float> m_panThresholds;
};

}  // namespace kvx
