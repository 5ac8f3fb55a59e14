/**
 * @file
 * Detection of frames with samples beyond the depth of their format.
 */
#ifndef KVXFRAME_SAMPLEDEPTH_H
#define KVXFRAME_SAMPLEDEPTH_H

#include "KvxFrame/View.h"

namespace kvx::frame {

/**
 * Checks that no sample of a frame of Plain 10 to 14-bit words exceeds its depth; such a frame would give wrong
 * colours. The error names the likely cause: swapped bytes, values in the high bits, a deeper format. Reads the whole
 * frame; frames of other layouts and depths pass unread.
 *
 * @throws Error 0x80070004 for a sample beyond the depth; what Validate() throws
 */
KVX_API void CheckSampleDepth(const SourceView& source);

}  // namespace kvx::frame

#endif
