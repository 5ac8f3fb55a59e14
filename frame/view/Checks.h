/** Argument checks that several functions share. They throw Error. */
#pragma once

#include "KvxFrame/View.h"

namespace kvx::frame {

uint64_t StrideMagnitude(ptrdiff_t stride);

/** What Validate() checks, except the format. `role` is the view's name in messages. */
void CheckBuffer(const SourceView& view, const char* role);
void CheckBuffer(const DestinationView& view, const char* role);

/** Checks a frame of any depth and layout. */
void CheckFrame(const SourceView& view);
void CheckFrame(const DestinationView& view);

void CheckSameSize(const SourceView& source, const DestinationView& destination);
/** Refuses overlapping views. Both are checked views. */
void CheckApart(const SourceView& source, const DestinationView& destination);
/** Refuses numbers of threads outside 0 to 1024. */
void CheckThreads(int count);

}  // namespace kvx::frame
