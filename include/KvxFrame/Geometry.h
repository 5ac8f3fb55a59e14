/**
 * @file
 * Cropping and mirroring of frames. No pixel moves in memory: a new view, with its own phase of the mosaic, describes
 * the result.
 */
#ifndef KVXFRAME_GEOMETRY_H
#define KVXFRAME_GEOMETRY_H

#include "KvxDemosaicing/KvxImage.h"
#include "KvxFrame/View.h"

namespace kvx::frame {

/**
 * A region of a frame: the same buffer, the phase of the region's first pixel.
 *
 * @param source a valid view
 * @param region not empty, inside the frame. In a packed row its left edge must be on a byte (columns that are even, or
 *               multiples of 4); rows that begin within bytes cannot be cropped
 * @throws Error what Validate() throws; 0x80070007 for another region
 */
KVX_API SourceView Crop(const SourceView& source, const _KvxRect& region);

/** A region of a picture, to convert into; as above. */
KVX_API DestinationView Crop(const DestinationView& destination, const _KvxRect& region);

/**
 * Describes a frame that the camera has mirrored (ReverseX, ReverseY) while it still reports the format of its sensor.
 *
 * The buffer is the same. A Bayer frame gets the phase of its first stored pixel. So does a TrueSense frame mirrored in
 * both directions; mirrored in one direction it has none of the 16 phases and gets a mirror flag instead. On a mirrored
 * frame the function undoes or completes the mirroring. Mono frames do not change. The picture is the mirrored picture
 * to the bit, except six pixels at the border of TrueSense frames mirrored in both directions.
 *
 * @throws Error what Validate() throws
 */
KVX_API SourceView Mirrored(const SourceView& source, bool horizontally, bool vertically);

/**
 * The frame upside down: its rows are read from the last to the first, so that the picture is flipped.
 *
 * @throws Error what Validate() throws; 0x80070007 for rows that begin within bytes
 */
KVX_API SourceView FlippedVertically(const SourceView& source);

/** The picture upside down: what is converted into it is stored flipped. */
KVX_API DestinationView FlippedVertically(const DestinationView& destination);

}  // namespace kvx::frame

#endif
