/**
 * @file
 * Views in C: frames and pictures in the caller's memory, their regions, mirroring and layouts. View.h and Geometry.h
 * explain them. Any thread may call these functions.
 */
#ifndef KVXFRAME_VIEWC_H
#define KVXFRAME_VIEWC_H

#include "KvxDemosaicing/KvxImage.h"
#include "KvxFrame/FormatC.h"

/** A frame to read, kvx::frame::SourceView. */
typedef struct KvxFrameSource {
    const void* data; /**< first byte of the top row */
    /** Bytes from a row to the next one below, negative if rows are stored from bottom to top; 0: without padding. */
    ptrdiff_t stride;
    size_t capacity;       /**< size of the buffer in bytes, from the row with the lowest address */
    uint32_t width;        /**< pixels */
    uint32_t height;       /**< rows */
    KvxFrameFormat format; /**< a mosaic or mono format */
    uint8_t horMirrored;   /**< 0 or 1; for TrueSense only, see KvxFrameSource_Mirror() */
    uint8_t verMirrored;   /**< likewise */
    uint8_t reserved;      /**< 0 */
} KvxFrameSource;

/** A picture to write, kvx::frame::DestinationView. Only samples are written. */
typedef struct KvxFrameDestination {
    void* data;            /**< first byte of the top row */
    ptrdiff_t stride;      /**< as in KvxFrameSource */
    size_t capacity;       /**< as in KvxFrameSource */
    uint32_t width;        /**< pixels */
    uint32_t height;       /**< rows */
    KvxFrameFormat format; /**< a colour format; of KvxFrame_Relayout() a mosaic or mono format */
    uint8_t reserved[3];   /**< 0 */
} KvxFrameDestination;

static_assert(sizeof(KvxFrameSource) == 3 * sizeof(void*) + 16 && sizeof(KvxFrameDestination) == sizeof(KvxFrameSource),
              "records are part of the binary interface");

KVX_EXTERN_C_BEGIN

/**
 * @{
 * Makes a view that of a region: the same buffer, and of a frame the phase of the region's first pixel.
 *
 * @param region not empty, inside the view. In a packed row its left edge must be on a byte
 * @return 0; 0x80070007 for another region or an invalid view
 */
KVX_API uint32_t KvxFrameSource_Crop(KvxFrameSource* view, const _KvxRect* region) KVX_NOEXCEPT;
KVX_API uint32_t KvxFrameDestination_Crop(KvxFrameDestination* view, const _KvxRect* region) KVX_NOEXCEPT;
/** @} */

/**
 * Describes a frame that the camera has mirrored while it still reports the format of its sensor: corrects the phase,
 * or sets mirror flags. On a mirrored frame it undoes or completes the mirroring.
 */
KVX_API uint32_t KvxFrameSource_Mirror(KvxFrameSource* view, bool horizontally, bool vertically) KVX_NOEXCEPT;

/** @{ The rows from the last to the first. @return 0; 0x80070007 for rows that begin within bytes */
KVX_API uint32_t KvxFrameSource_Flip(KvxFrameSource* view) KVX_NOEXCEPT;
KVX_API uint32_t KvxFrameDestination_Flip(KvxFrameDestination* view) KVX_NOEXCEPT;
/** @} */

/**
 * Copies a frame from any layout to any layout: unpacks, packs, swaps bytes. Relayout.h has the rules.
 *
 * @param source      a mono, Bayer or TrueSense frame
 * @param destination the same format except for the layout; the same size; no overlap
 * @param threads     as of KvxFrameConverter_SetThreads()
 * @return 0; 0x80070008 null data; 0x80070004 `threads` out of range; 0x80070007 formats or sizes that do not fit
 */
KVX_API uint32_t KvxFrame_Relayout(const KvxFrameSource* source, const KvxFrameDestination* destination,
                                   int threads) KVX_NOEXCEPT;

/**
 * Checks that no sample of a frame of 10 to 14-bit words exceeds its depth; the sentence names the likely cause.
 *
 * @return 0; 0x80070004 a sample beyond the depth; 0x80070007, 0x80070008 an invalid view
 */
KVX_API uint32_t KvxFrame_CheckSampleDepth(const KvxFrameSource* source) KVX_NOEXCEPT;

KVX_EXTERN_C_END

#endif
