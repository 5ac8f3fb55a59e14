#pragma once

#include <string>

#include "tools/files/Bytes.h"
#include "tools/files/Picture.h"

namespace kvx::tool {

enum class PictureKind { Png, Tiff, Pnm };

/** The extension with its dot, in lower case; empty when there is none. */
std::string LowerExtension(const std::string& path);

/** By the extension, in any case; "-" is PNM. Throws ExitCode::Usage for any other. */
PictureKind PictureKindFor(const std::string& path);

/** The content of a file of that kind. Pictures for PNG and TIFF have the full range, 255 or 65535. */
Bytes EncodePicture(const Picture& picture, PictureKind kind);

}  // namespace kvx::tool
