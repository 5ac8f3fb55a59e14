/** What several entries refuse, each with one sentence. */
#pragma once

#include "KvxFrame/View.h"

namespace kvx::frame {

uint64_t StrideMagnitude(ptrdiff_t stride);

/** All that Validate() checks but the format. `role` is the view's name in sentences. */
void CheckBuffer(const SourceView& view, const char* role);
void CheckBuffer(const DestinationView& view, const char* role);

/** A frame of any depth and layout, as read or written without a conversion. */
void CheckFrame(const SourceView& view);
void CheckFrame(const DestinationView& view);

void CheckSameSize(const SourceView& source, const DestinationView& destination);
/** No byte of the one lies within the other. Both are checked views. */
void CheckApart(const SourceView& source, const DestinationView& destination);
/** 0 to 1024. */
void CheckThreads(int count);

}  // namespace kvx::frame
