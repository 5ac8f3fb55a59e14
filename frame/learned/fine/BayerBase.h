/** What the Bayer networks read: rows of the library's in-house interpolation. */
#pragma once

#include <cstdint>
#include <memory>

#include "KvxDemosaicing/KvxRows.h"
#include "KvxFrame/View.h"
#include "frame/base/Buffer.h"

namespace kvx::frame {

/** Interpolates bands of frames, as words of 16 bits. Per-thread state. */
class BayerBase {
public:
    /** @throws std::bad_alloc */
    BayerBase();

    /**
     * Allocates the memory for bands of so many rows of a frame, so that Interpolate() allocates nothing.
     * @return the library's result. @throws std::bad_alloc
     */
    uint32_t Prepare(const SourceView& mosaic, const KvxRowSource& rows, size_t count);

    /**
     * Interpolates the rows `top` to `bottom` - 1 of a frame, as far as they exist, as of the whole frame.
     * @return the library's result
     */
    uint32_t Interpolate(const SourceView& mosaic, const KvxRowSource& rows, int64_t top, int64_t bottom);

    /** The result: red, green and blue of each pixel, in the rows of the frame. */
    KvxRowSource Picture() const;

private:
    uint32_t Convert(const Format& format, uint32_t width, uint32_t rows);
    void Put(uint32_t row, uint32_t column, uint32_t count, const uint16_t* red, const uint16_t* green,
             const uint16_t* blue);

    std::unique_ptr<KvxBayer, decltype(&KvxBayer_DeleteComponent)> m_component;
    KvxRowSource m_rows{};    // of the mosaic
    int m_shift = 0;          // from its samples to words of 16 bits
    uint32_t m_firstRow = 0;  // of the band
    size_t m_width = 0;
    Buffer m_picture;
};

}  // namespace kvx::frame
