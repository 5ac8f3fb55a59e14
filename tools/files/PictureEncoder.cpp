#include "tools/files/PictureEncoder.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>
#include <opencv2/imgcodecs.hpp>

#include "tools/ToolError.h"
#include "tools/files/Npy.h"
#include "tools/files/OutputFile.h"
#include "tools/files/Pnm.h"

namespace kvx::tool {

std::string LowerExtension(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return extension;
}

PictureKind PictureKindFor(const std::string& path) {
    static const std::map<std::string, PictureKind> kinds = {{".png", PictureKind::Png},   {".tif", PictureKind::Tiff},
                                                             {".tiff", PictureKind::Tiff}, {".jpg", PictureKind::Jpeg},
                                                             {".jpeg", PictureKind::Jpeg}, {".npy", PictureKind::Npy},
                                                             {".ppm", PictureKind::Pnm},   {".pnm", PictureKind::Pnm}};
    const auto found = kinds.find(LowerExtension(path));
    if (found == kinds.end() && path != "-") {
        Fail(ExitCode::Usage,
             "{}: the picture's name must end in .png, .jpg, .jpeg, .tif, .tiff, .npy, .ppm or .pnm (or be -)", path);
    }
    return found == kinds.end() ? PictureKind::Pnm : found->second;
}

Bytes EncodePicture(const Picture& picture, PictureKind kind, int jpegQuality) {
    const cv::Mat& pixels = picture.pixels;
    if (kind == PictureKind::Pnm) {
        return EncodePnm(picture);
    }
    if (kind == PictureKind::Npy) {
        return EncodeNpy(pixels);
    }
    if (kind == PictureKind::Jpeg && pixels.depth() != CV_8U) {
        Fail(ExitCode::Usage, "JPEG files have 8 bits per sample: choose --to RGB8, or write a .png file");
    }
    const char* extension = kind == PictureKind::Png ? ".png" : kind == PictureKind::Jpeg ? ".jpg" : ".tiff";
    std::vector<int> settings;
    if (kind == PictureKind::Jpeg) settings = {cv::IMWRITE_JPEG_QUALITY, jpegQuality};
    Bytes content;
    bool isEncoded = false;
    try {
        isEncoded = cv::imencode(extension, pixels, content, settings);
    } catch (const cv::Exception&) {
        // As after any other failure to encode.
    }
    if (!isEncoded) {
        Fail(ExitCode::Output, "the picture is too large for this kind of file: write a .ppm file");
    }
    return content;
}

void WritePicture(const std::string& path, const Picture& picture, PictureKind kind, int jpegQuality) {
    if (kind == PictureKind::Pnm) {
        WriteOutput(path, [&](const ContentSink& sink) { EncodePnm(picture, sink); });
    } else {
        WriteOutput(path, EncodePicture(picture, kind, jpegQuality));
    }
}

}  // namespace kvx::tool
