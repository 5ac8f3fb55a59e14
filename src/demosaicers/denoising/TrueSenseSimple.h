/** The light noise-reducing TrueSense demosaicer: between the fast one and the pipeline. */
#pragma once

#include "demosaicers/denoising/DenoisingDemosaicer.h"
#include "demosaicers/denoising/UpSampler.h"

namespace kvx {

/**
 * Pan and half-resolution colour differences as in the pipeline; then every pixel is pan plus the up-sampled
 * difference. There are no filters of the half-resolution planes, no low-pass pan, and no sharpening.
 */
template <class T>
class TrueSenseSimple final : public DenoisingDemosaicer<T> {
public:
    explicit TrueSenseSimple(int bandRows = 64) : DenoisingDemosaicer<T>(bandRows) {}

    void CleanMemory() noexcept override;

private:
    /** Per-thread state: up-sampling, and a row of pan and of three colours. */
    struct Workspace {
        UpSampler upSampler;
        PaddedPlane<int32_t> pan;
        PaddedPlane<int16_t> colours;
    };

    bool ReserveThreads(int threads, int width) noexcept override;
    int Convert() noexcept override;

    void ColorCorrection(Workspace& workspace, const class PixelWriter& writer, int row) noexcept;

    std::unique_ptr<Workspace[]> m_workspaces;
};

}  // namespace kvx
