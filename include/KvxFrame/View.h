/**
 * @file
 * Frames and pictures in the caller's memory.
 *
 * A view owns nothing: the buffer stays the caller's and must live, unchanged by others, as long as a call uses it.
 */
#ifndef KVXFRAME_VIEW_H
#define KVXFRAME_VIEW_H

#include <cstddef>
#include <cstdint>

#include "KvxFrame/Format.h"

namespace kvx::frame {

/** A frame to be read. */
struct SourceView {
    const void* data = nullptr;  ///< first byte of the top row
    uint32_t width = 0;          ///< pixels
    uint32_t height = 0;         ///< rows
    /**
     * Bytes from a row to the one below it; negative where rows are stored from bottom to top. 0: the rows follow each
     * other without any padding, which for packed layouts may be within a byte.
     */
    ptrdiff_t stride = 0;
    size_t capacity = 0;  ///< bytes that the buffer has from its lowest row on
    Format format;        ///< a mosaic or mono format
    /**
     * The sensor was read out from right to left (bottom to top), while `format` names the mosaic as the sensor has it:
     * its first pixel is the last of a row (of the last row). For TrueSense only; a mirrored Bayer mosaic is another
     * phase. Mirrored() in Geometry.h sets them.
     */
    bool horMirrored = false;
    bool verMirrored = false;  ///< see above
};

/** A picture to be written. Samples are where the format says, nothing else is written. */
struct DestinationView {
    void* data = nullptr;  ///< first byte of the top row
    uint32_t width = 0;    ///< pixels
    uint32_t height = 0;   ///< rows
    ptrdiff_t stride = 0;  ///< as in SourceView
    size_t capacity = 0;   ///< as in SourceView
    Format format;         ///< a colour format
};

/** Bytes that `height` rows with this stride (0: without padding) take, from the first to the last that matters. */
KVX_API uint64_t ImageBytes(const Format& format, uint32_t width, uint32_t height, ptrdiff_t stride);

/**
 * Checks a view: null or zero, a size past 2^31 - 1, a format that is none or that is no source (destination), a stride
 * that cannot hold a row, rows beyond the capacity, mirror flags on anything but TrueSense.
 *
 * @throws Error 0x80070008 for null data, 0x80070007 for all else
 */
KVX_API void Validate(const SourceView& source);
/** The same for a picture. */
KVX_API void Validate(const DestinationView& destination);

}  // namespace kvx::frame

#endif
