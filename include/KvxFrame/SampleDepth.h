/**
 * @file
 * Finds frames whose samples cannot be of the depth that their format claims.
 */
#ifndef KVXFRAME_SAMPLEDEPTH_H
#define KVXFRAME_SAMPLEDEPTH_H

#include "KvxFrame/View.h"

namespace kvx::frame {

/**
 * Refuses a frame of Plain 10 to 14-bit words with a sample beyond its depth, which would turn into wrong colours, and
 * tells the likely cause: exchanged bytes, values in the high bits, more bits than claimed. Reads the whole frame; any
 * other frame passes unread.
 *
 * @throws Error 0x80070004; what Validate() throws
 */
KVX_API void CheckSampleDepth(const SourceView& source);

}  // namespace kvx::frame

#endif
