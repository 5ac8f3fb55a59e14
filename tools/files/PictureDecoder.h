#pragma once

#include <string>

#include "tools/files/Bytes.h"
#include "tools/files/Picture.h"

namespace kvx::tool {

/** Whether the content starts like a PGM, PPM, PNG, TIFF or NumPy file. */
bool IsPictureFile(const Bytes& content);

/**
 * A picture file of 8 or 16 bits per sample, grey or colour; an alpha channel is dropped. Also reads any other
 * kind that the image library knows. Throws ExitCode::Input; `name` is for messages.
 */
Picture DecodePicture(const Bytes& content, const std::string& name);

}  // namespace kvx::tool
