/** The last steps for a band of rows: up-sampling, colour correction, sharpening, writing. */
#pragma once

#include <array>

#include "demosaicers/denoising/PipelinePlanes.h"
#include "demosaicers/denoising/UpSampler.h"
#include "demosaicers/frame/TrueSenseFrame.h"
#include "pipeline/Sharpness.h"

namespace kvx {

/** The parameters of the last steps. */
struct FinishSettings {
    std::array<uint16_t, KVX_TONE_TABLE_SIZE> tone;  ///< display values of 8 bits, or of 12 for words
    std::array<uint16_t, kGammaCodes> display;       ///< the same by gamma codes
    std::array<float, 9> matrix;
    SharpnessTables sharpness;
    float maxSharpen;
    bool hasDetail;    ///< the detail of pan is added
    bool isSharpened;  ///< and sharpened
    bool isMono, isDeep;
};

/** Per-thread state. */
class BandFinisher {
public:
    /** @return false without memory */
    bool Reserve(int width) noexcept;

    /** Finishes and writes rows [begin, end) of the working area, which lie in the region. */
    void Finish(const TrueSenseFrame& frame, const PipelinePlanes& planes, const LowPlanes& low,
                const FinishSettings& settings, int begin, int end) noexcept;

private:
    static constexpr int kRing = 8;

    // Rings of rows.
    int32_t* LowPan(int row) const {
        return m_words.Row(row % kRing);
    }
    int16_t* LowCodes(int row) const {
        return reinterpret_cast<int16_t*>(m_values.Row(row % kRing));
    }
    uint16_t* Display(int row) const {
        return m_values.Row(kRing + row % kRing);
    }
    uint16_t* Smooth(int row) const {
        return m_values.Row(2 * kRing + row % kRing);
    }
    // Rows of the current step.
    uint16_t* Colour(int channel) const {
        return m_values.Row(3 * kRing + channel);
    }
    uint16_t* Linear(int channel) const {
        return m_values.Row(3 * kRing + 3 + channel);
    }
    uint16_t* Pan() const {
        return m_values.Row(3 * kRing + 6);
    }
    uint16_t* Levels() const {
        return m_values.Row(3 * kRing + 7);
    }

    void PrepareRow(const FinishSettings& settings, int row);
    void ColorCorrection(const FinishSettings& settings, int row);
    void AddDetailOf(const FinishSettings& settings, const PipelinePlanes& planes, int row);
    void Sharpness(const FinishSettings& settings, const PipelinePlanes& planes, int row, float* detail);

    UpSampler m_upSampler;
    size_t m_width = 0;
    PaddedPlane<int32_t> m_words;
    PaddedPlane<uint16_t> m_values;
    PaddedPlane<float> m_floats;  // edge scale, noise gain, detail
};

}  // namespace kvx
