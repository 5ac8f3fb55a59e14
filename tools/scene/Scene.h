#pragma once

#include "tools/files/Picture.h"

namespace kvx::tool {

/** A drawn test scene of 768x512 pixels, 16-bit colour: patches, a zone plate, fine lines, letters and ramps. */
Picture DrawScene();

}  // namespace kvx::tool
