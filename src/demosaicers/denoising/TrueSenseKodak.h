/** The noise-reducing TrueSense demosaicer that calls Api_ImageProcess(): the reference for its fast twin. */
#pragma once

#include <array>
#include <memory>

#include "demosaicers/denoising/PipelineParams.h"
#include "demosaicers/frame/TrueSenseDemosaicer.h"

namespace kvx {

/**
 * One thread, plane after plane. The pipeline gives bytes: words receive them scaled to their depth. It always filters
 * impulses, whatever "impulseFilterEnable" says.
 */
template <class T>
class TrueSenseKodak final : public TrueSenseDemosaicer<T> {
public:
    TrueSenseKodak() : TrueSenseDemosaicer<T>(kDenoisingRules) {}

    void CleanMemory() noexcept override;

private:
    int Reserve() noexcept override;
    int Convert() noexcept override;

    void WriteRow(int row) const noexcept;

    ImageProcessParam m_param{};
    ImageProcessMemory m_memory{};
    std::array<uint16_t, KVX_TONE_TABLE_SIZE> m_tone{};
    int m_width = 0, m_height = 0;            // of the working area that there is memory for
    std::unique_ptr<uint8_t[]> m_buffers[7];  // in the order of ImageProcessMemory
    std::unique_ptr<uint16_t[]> m_input;
    std::unique_ptr<uint8_t[]> m_output;
    std::unique_ptr<uint16_t[]> m_row;  // red, green and blue of a row
};

}  // namespace kvx
