/**
 * @file
 * Views: frames and pictures in the caller's memory.
 *
 * A view owns no memory. The caller keeps the buffer alive, and unchanged by other threads, while a call uses it.
 */
#ifndef KVXFRAME_VIEW_H
#define KVXFRAME_VIEW_H

#include <cstddef>
#include <cstdint>

#include "KvxFrame/Format.h"

namespace kvx::frame {

/** A frame to read. */
struct SourceView {
    const void* data = nullptr;  ///< first byte of the top row
    uint32_t width = 0;          ///< pixels
    uint32_t height = 0;         ///< rows
    /**
     * Bytes from a row to the next one below; negative if rows are stored from bottom to top. 0: rows follow each other
     * without padding; rows of packed layouts may then begin within a byte.
     */
    ptrdiff_t stride = 0;
    size_t capacity = 0;  ///< size of the buffer in bytes, from the row with the lowest address
    Format format;        ///< a mosaic or mono format
    /**
     * The sensor was read out from right to left (vertically: from bottom to top), but `format` describes the mosaic of
     * the sensor, whose first pixel is the last of a stored row (of the last row). For TrueSense only; a mirrored Bayer
     * mosaic has another phase. Mirrored() in Geometry.h sets the flags.
     */
    bool horMirrored = false;
    bool verMirrored = false;  ///< see above
};

/** A picture to write. Only samples are written. */
struct DestinationView {
    void* data = nullptr;  ///< first byte of the top row
    uint32_t width = 0;    ///< pixels
    uint32_t height = 0;   ///< rows
    ptrdiff_t stride = 0;  ///< as in SourceView
    size_t capacity = 0;   ///< as in SourceView
    Format format;         ///< a colour format
};

/** Size of `height` rows with this stride (0: without padding) in bytes, without padding after the last row. */
KVX_API uint64_t ImageBytes(const Format& format, uint32_t width, uint32_t height, ptrdiff_t stride);

/**
 * Checks a view: data that is null, sizes of 0 or beyond 2^31 - 1, a format that is invalid or no source (destination),
 * a stride too short for a row, rows beyond the capacity, mirror flags on anything but TrueSense.
 *
 * @throws Error 0x80070008 for null data, 0x80070007 for all other errors
 */
KVX_API void Validate(const SourceView& source);
/** The same for a picture. */
KVX_API void Validate(const DestinationView& destination);

}  // namespace kvx::frame

#endif
