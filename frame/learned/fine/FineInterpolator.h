/** The algorithm "fine": interpolation by a learned network (docs/fine.md). */
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "KvxFrame/View.h"
#include "frame/learned/fine/NoiseDeviation.h"

namespace kvx::frame {

class FineInterpolator {
public:
    /** @param family Bayer or TrueSense */
    explicit FineInterpolator(Family family);
    ~FineInterpolator();

    /**
     * Interpolates a frame. Working memory stays for the next frame.
     *
     * @param mosaic  unpacked, of a positive stride; mirrored as its format's phase and flags say
     * @param picture three samples per pixel, of 8 or 16 bits or of the mosaic's depth; must not overlap the mosaic
     * @param noise   of the mosaic's samples, to be removed; std::nullopt: none is removed
     * @return 0, or the result of the library
     */
    uint32_t Convert(const SourceView& mosaic, const DestinationView& picture, const std::optional<NoiseShare>& noise,
                     int threads);

    void Release() noexcept;

private:
    class Worker;
    Family m_family;
    std::vector<std::unique_ptr<Worker>> m_workers;  // one for each thread
};

}  // namespace kvx::frame
