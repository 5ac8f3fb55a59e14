/** The algorithm "swift": two learned linear filters for each colour, mixed by the gradients around. */
#pragma once

#include <memory>
#include <vector>

#include "KvxFrame/View.h"

namespace kvx::frame {

class SwiftStrip;

class SwiftInterpolator {
public:
    /** @param family Bayer or TrueSense */
    explicit SwiftInterpolator(Family family);
    ~SwiftInterpolator();

    /**
     * Interpolates a frame. Working memory stays for the next frame.
     *
     * @param mosaic  unpacked, of a positive stride; mirrored as its format's phase and flags say
     * @param picture three samples per pixel, of 8 or 16 bits or of the mosaic's depth; must not overlap the mosaic
     * @return 0
     */
    uint32_t Convert(const SourceView& mosaic, const DestinationView& picture, int threads);

    void Release() noexcept;

private:
    Family m_family;
    std::vector<std::unique_ptr<SwiftStrip>> m_strips;  // one for each thread
};

}  // namespace kvx::frame
