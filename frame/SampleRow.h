/** Rows of a source, whatever its layout. */
#pragma once

#include "KvxFrame/View.h"

namespace kvx::frame {

/** The samples of a row of a valid view as right-aligned words. Several threads may read. */
void ReadRow(const SourceView& source, uint32_t row, uint16_t* samples);

/** The filter of the sample stored at a site: mirror flags count. The site may lie outside the frame. */
char StoredFilterAt(const SourceView& source, uint32_t row, uint32_t column);

}  // namespace kvx::frame
