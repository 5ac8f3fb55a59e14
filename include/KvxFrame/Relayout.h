/**
 * @file
 * The samples of a frame in another layout.
 */
#ifndef KVXFRAME_RELAYOUT_H
#define KVXFRAME_RELAYOUT_H

#include "KvxFrame/View.h"

namespace kvx::frame {

/**
 * Copies a frame from any layout into any layout: unpacks, packs, exchanges bytes. Packing and aligning to the left cut
 * samples to the depth; right-aligned words keep all of their 16 bits.
 *
 * @param source      mono, Bayer or TrueSense
 * @param destination the same but for the layout; the same size; no overlap. Only samples are written, and zeros into
 *                    the bits of their bytes that no sample uses
 * @param threads     as in Converter::SetThreads()
 * @throws Error 0x80070008 for null data, 0x80070004 for `threads`, 0x80070007 for all else that does not fit
 */
KVX_API void Relayout(const SourceView& source, const DestinationView& destination, int threads = 0);

}  // namespace kvx::frame

#endif
