/** The records of the C interface as those of C++. */
#pragma once

#include "KvxFrame/View.h"
#include "KvxFrame/ViewC.h"
#include "frame/c/Sentence.h"

namespace kvx::frame::c {

/** The format of a record. @throws Error 0x80070008 null, 0x80070007 fields that do not fit each other */
Format FormatOf(const KvxFrameFormat* record);

/** The views of records; their formats are checked, as those of views may be any. @throws Error as FormatOf() */
SourceView ViewOf(const KvxFrameSource* record);
/** The same for a picture. */
DestinationView ViewOf(const KvxFrameDestination* record);

KvxFrameFormat RecordOf(const Format& format) noexcept;
KvxFrameSource RecordOf(const SourceView& view) noexcept;
KvxFrameDestination RecordOf(const DestinationView& view) noexcept;

}  // namespace kvx::frame::c
