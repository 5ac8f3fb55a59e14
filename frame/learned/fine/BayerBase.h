/** What the Bayer networks read: rows of the library's in-house interpolation. */
#pragma once

#include <cstdint>
#include <memory>

#include "KvxDemosaicing/KvxBayer.h"
#include "KvxFrame/View.h"
#include "frame/base/Buffer.h"
#include "frame/learned/fine/CellReader.h"

namespace kvx::frame {

/** Interpolates bands of frames. One thread's. */
class BayerBase {
public:
    /** @throws std::bad_alloc */
    BayerBase();

    /**
     * Interpolates the rows `top` to `bottom` - 1 of a frame, as far as they exist, as of the whole frame.
     *
     * @param source gets the picture: its rows, channels and depth
     * @return the library's result
     */
    uint32_t Interpolate(const SourceView& mosaic, int64_t top, int64_t bottom, CellSource& source);

private:
    std::unique_ptr<KvxBayer, decltype(&KvxBayer_DeleteComponent)> m_component;
    Buffer m_words, m_picture;
};

}  // namespace kvx::frame
