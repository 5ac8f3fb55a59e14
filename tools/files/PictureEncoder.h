#pragma once

#include <string>

#include "tools/files/Bytes.h"
#include "tools/files/Picture.h"

namespace kvx::tool {

enum class PictureKind { Png, Tiff, Jpeg, Npy, Pnm };

constexpr int kJpegQuality = 95;

/** The extension with its dot, in lower case; empty when there is none. */
std::string LowerExtension(const std::string& path);

/** By the extension, in any case; "-" is PNM. Throws ExitCode::Usage for any other. */
PictureKind PictureKindFor(const std::string& path);

/**
 * The content of a file of that kind. Pictures for all but PNM have the full range, 255 or 65535. `jpegQuality` is 1 to
 * 100. Throws ExitCode::Usage for words in a JPEG file, ExitCode::Output if the picture is too large.
 */
Bytes EncodePicture(const Picture& picture, PictureKind kind, int jpegQuality = kJpegQuality);

/** WriteOutput() of that content; a PNM file is never whole in memory. */
void WritePicture(const std::string& path, const Picture& picture, PictureKind kind, int jpegQuality = kJpegQuality);

}  // namespace kvx::tool
