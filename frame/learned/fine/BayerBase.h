/** What the Bayer networks read: rows of the library's in-house interpolation. */
#pragma once

#include <cstdint>
#include <memory>

#include "KvxDemosaicing/KvxBayer.h"
#include "KvxFrame/View.h"
#include "frame/base/Buffer.h"
#include "frame/learned/fine/CellReader.h"

namespace kvx::frame {

/** Interpolates bands of frames. Per-thread state. */
class BayerBase {
public:
    /** @throws std::bad_alloc */
    BayerBase();

    /**
     * Allocates the memory for bands of so many rows of a frame, so that Interpolate() allocates nothing.
     * @return the library's result. @throws std::bad_alloc
     */
    uint32_t Prepare(const SourceView& mosaic, size_t rows);

    /**
     * Interpolates the rows `top` to `bottom` - 1 of a frame, as far as they exist, as of the whole frame.
     *
     * @param source gets the picture: its rows, channels and depth
     * @return the library's result
     */
    uint32_t Interpolate(const SourceView& mosaic, int64_t top, int64_t bottom, CellSource& source);

private:
    uint32_t Convert(const Format& format, uint32_t width, uint32_t rows);

    std::unique_ptr<KvxBayer, decltype(&KvxBayer_DeleteComponent)> m_component;
    Buffer m_words, m_picture;
};

}  // namespace kvx::frame
