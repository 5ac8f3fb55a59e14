#pragma once

#include <libraw/libraw.h>

#include "KvxFrame/Format.h"
#include "tools/files/Sidecar.h"

namespace kvx::tool {

/**
 * Black level, as-shot (else daylight) gains, matrix and orientation of an unpacked file with a Bayer mosaic of this
 * format, as far as the file has them.
 */
Sidecar FactsOf(LibRaw& raw, const frame::Format& format);

}  // namespace kvx::tool
