/** The noise-reducing TrueSense demosaicer, made fast. */
#pragma once

#include "demosaicers/denoising/BandFinisher.h"
#include "demosaicers/denoising/DenoisingDemosaicer.h"

namespace kvx {

/**
 * The arithmetic of Api_ImageProcess() in bands, threads and vectors: destinations of bytes receive the same bytes as
 * from TrueSenseKodak, as long as "impulseFilterEnable" is set. Words receive 12 significant bits: the tone table's
 * own, to which the detail is added at that scale.
 */
template <class T>
class TrueSenseKodakLike final : public DenoisingDemosaicer<T> {
public:
    explicit TrueSenseKodakLike(int bandRows = 64) : DenoisingDemosaicer<T>(bandRows) {}

    void CleanMemory() noexcept override;

private:
    int Reserve() noexcept override;
    bool ReserveThreads(int threads, int width) noexcept override;
    int Convert() noexcept override;

    const PaddedPlane<int32_t>* CleanLowColorDiff() noexcept;
    const PaddedPlane<int32_t>* CleanLowPan() noexcept;
    ThresholdTable ColorBuildGammaNoiseThreshold(int pass) const noexcept;
    ThresholdTable PanBuildGammaNoiseThreshold(int pass) const noexcept;
    template <class Level>
    void IterativeSigmaFilter(const PaddedPlane<int32_t>& from, const PaddedPlane<Level>& levels, int radius, int step,
                              const ThresholdTable& table, const PaddedPlane<int32_t>& to) noexcept;

    FinishSettings m_settings{};
    std::unique_ptr<BandFinisher[]> m_finishers;  // for each thread; of what follows a row
    PaddedPlane<int16_t> m_codes;
    PaddedPlane<int32_t> m_thresholds;
};

}  // namespace kvx
