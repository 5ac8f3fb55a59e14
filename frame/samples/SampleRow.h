/** Rows of a source, whatever its layout. */
#pragma once

#include "KvxFrame/View.h"

namespace kvx::frame {

/** The samples of a row of a valid view as right-aligned words. Several threads may read. */
void ReadRow(const SourceView& source, uint32_t row, uint16_t* samples);

/**
 * Stores right-aligned words as a row of a checked frame of any layout. Packing cuts them to the depth; bits of the
 * last byte that no sample uses become 0. Several threads may write, but of a sequence, whose rows share bytes, in
 * order.
 */
void WriteRow(const DestinationView& frame, uint32_t row, const uint16_t* samples);

/** Packed rows that may begin within a byte. */
bool IsSequence(const Format& format, ptrdiff_t stride);

/** The filter of the sample stored at a site: mirror flags count. The site may lie outside the frame. */
char StoredFilterAt(const SourceView& source, uint32_t row, uint32_t column);

}  // namespace kvx::frame
