/** The algorithms of the frame layer itself: "fine" and "swift" (docs/fine.md). */
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "KvxDemosaicing/KvxRows.h"
#include "KvxFrame/SensorNoise.h"
#include "KvxFrame/View.h"

namespace kvx::frame {

class LearnedInterpolator {
public:
    virtual ~LearnedInterpolator() = default;

    virtual const char* Name() const = 0;

    /** The depth of mosaics between a finish's balance and its matrix. @param sourceBits of the frame */
    virtual uint8_t WorkingBits(uint8_t sourceBits) const = 0;

    /**
     * Interpolates a frame. Working memory stays for the next frame.
     *
     * @param mosaic its format, unpacked, its size and its mirror flags count
     * @param source of the mosaic's samples
     * @param pictureBits depth of the pixels: 8, 16, or the mosaic's
     * @param noise  of the mosaic's samples, with signal and noise as shares of white, for an algorithm that removes
     *               it; std::nullopt: none is removed
     * @return 0, or the result of the library, in which case nothing is written
     * @throws std::bad_alloc; nothing is written
     */
    virtual uint32_t Convert(const SourceView& mosaic, const KvxRowSource& source, uint8_t pictureBits,
                             const KvxPixelSink& pixels, const std::optional<NoiseLine>& noise, int threads) = 0;

    virtual void Release() noexcept = 0;
};

/** The algorithm with this name for frames of a family; null if there is none. */
std::unique_ptr<LearnedInterpolator> MakeLearnedInterpolator(std::string_view name, Family family);

}  // namespace kvx::frame
