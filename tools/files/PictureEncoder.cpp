#include "tools/files/PictureEncoder.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>

#include "tools/ToolError.h"
#include "tools/files/Pnm.h"

namespace kvx::tool {

std::string LowerExtension(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return extension;
}

PictureKind PictureKindFor(const std::string& path) {
    const std::string extension = LowerExtension(path);
    if (extension == ".png") {
        return PictureKind::Png;
    }
    if (extension == ".tif" || extension == ".tiff") {
        return PictureKind::Tiff;
    }
    if (extension == ".ppm" || extension == ".pnm" || path == "-") {
        return PictureKind::Pnm;
    }
    Fail(ExitCode::Usage, "{}: the picture's name must end in .png, .tif, .tiff, .ppm or .pnm (or be -)", path);
}

Bytes EncodePicture(const Picture& picture, PictureKind kind) {
    if (kind == PictureKind::Pnm) {
        return EncodePnm(picture);
    }
    Bytes content;
    if (!cv::imencode(kind == PictureKind::Png ? ".png" : ".tiff", picture.pixels, content)) {
        Fail(ExitCode::Output, "the picture is too large for this kind of file: write a .ppm file");
    }
    return content;
}

}  // namespace kvx::tool
