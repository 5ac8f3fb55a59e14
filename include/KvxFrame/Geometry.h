/**
 * @file
 * Cutting and mirroring frames. The pixels stay where they are; the phase of the mosaic moves.
 */
#ifndef KVXFRAME_GEOMETRY_H
#define KVXFRAME_GEOMETRY_H

#include "KvxDemosaicing/KvxImage.h"
#include "KvxFrame/View.h"

namespace kvx::frame {

/**
 * A part of a frame: same buffer, the phase of its own first pixel.
 *
 * @param source a valid view
 * @param region inside the frame, not empty; its left edge on a byte of a packed row (an even or a multiple of 4
 *               columns), and then in a frame with a stride
 * @throws Error 0x80070007
 */
KVX_API SourceView Crop(const SourceView& source, const _KvxRect& region);

/** A part of a picture, to convert into; as above. */
KVX_API DestinationView Crop(const DestinationView& destination, const _KvxRect& region);

/**
 * The frame as it really is when the camera mirrors (ReverseX, ReverseY) and yet names the format of its sensor.
 *
 * Same buffer. A Bayer frame gets the phase that its first stored pixel has. A TrueSense frame mirrored both ways gets
 * such a phase, too; mirrored one way it is none of the 16 phases and gets a mirror flag instead. Applied to a mirrored
 * frame this undoes or completes the mirroring. Mono frames stay as they are. The picture is the mirrored one, to the
 * bit (of TrueSense mirrored both ways but for six pixels at the border).
 *
 * @throws Error 0x80070007 for a view that is not valid
 */
KVX_API SourceView Mirrored(const SourceView& source, bool horizontally, bool vertically);

/**
 * The frame upside down: the same pixels read from the last row to the first, so that what Convert() makes of it is
 * flipped.
 *
 * @throws Error 0x80070007 for a view that is not valid, or rows that do not start at a byte
 */
KVX_API SourceView FlippedVertically(const SourceView& source);

/** The picture upside down: what is converted into it ends up flipped. */
KVX_API DestinationView FlippedVertically(const DestinationView& destination);

}  // namespace kvx::frame

#endif
