/** Reads and writes rows in any layout. */
#pragma once

#include "KvxFrame/View.h"

namespace kvx::frame {

/** Reads samples of a row of a valid view as right-aligned words. Several threads may read at the same time. */
void ReadSamples(const SourceView& source, uint32_t row, uint32_t column, uint32_t count, uint16_t* samples);

/** The samples of a row where they are, if they are words as ReadSamples() gives them; else null. */
const uint16_t* WordsInPlace(const SourceView& source, uint32_t row, uint32_t column);

/** All samples of a row. */
inline void ReadRow(const SourceView& source, uint32_t row, uint16_t* samples) {
    ReadSamples(source, row, 0, source.width, samples);
}

/**
 * Writes right-aligned words to a row of a checked frame of any layout. Packing drops bits above the depth and clears
 * unused bits of the last byte. Several threads may write at the same time, except to a sequence: its rows share bytes
 * and must be written in order.
 */
void WriteRow(const DestinationView& frame, uint32_t row, const uint16_t* samples);

/** Whether rows are packed and may begin within a byte. */
bool IsSequence(const Format& format, ptrdiff_t stride);

/** The filter of the sample stored at a site, with mirror flags. The site may lie outside the frame. */
char StoredFilterAt(const SourceView& source, uint32_t row, uint32_t column);

}  // namespace kvx::frame
