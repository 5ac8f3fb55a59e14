/**
 * @file
 * Conversion of a frame between layouts.
 */
#ifndef KVXFRAME_RELAYOUT_H
#define KVXFRAME_RELAYOUT_H

#include "KvxFrame/View.h"

namespace kvx::frame {

/**
 * Copies a frame from any layout to any layout: unpacks, packs, swaps bytes. Packing and left alignment drop bits above
 * the depth; right-aligned words keep all of their 16 bits.
 *
 * @param source      a mono, Bayer or TrueSense frame
 * @param destination the same format except for the layout; the same size; no overlap. Only samples are written, and
 *                    zeros to the unused bits of their bytes
 * @param threads     as in Converter::SetThreads()
 * @throws Error 0x80070008 for null data, 0x80070004 for `threads` out of range, 0x80070007 for formats or sizes that
 *         do not fit
 */
KVX_API void Relayout(const SourceView& source, const DestinationView& destination, int threads = 0);

}  // namespace kvx::frame

#endif
