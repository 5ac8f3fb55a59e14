#include "tools/BayerConversion.h"

#include <opencv2/imgproc.hpp>
#include <string_view>

#include "KvxDemosaicing/KvxBayerFlat.h"
#include "tools/Algorithm.h"
#include "tools/SampleScale.h"
#include "tools/ToolError.h"

namespace kvx::tool {
namespace {

_KvxImage DescribeImage(const cv::Mat& pixels, const PixelFormat& format) {
    _KvxImage image{};
    image.structSize = sizeof(image);
    image.structVersion = KVX_IMAGE_VERSION;
    image.pixelType = format.pixelType;
    image.pixelDepth = format.bitsPerComponent;
    image.width = pixels.cols;
    image.height = pixels.rows;
    image.lineStep = static_cast<uint32_t>(pixels.step);
    image.imageSize = image.lineStep * image.height;
    image.data = pixels.data;
    return image;
}

/** The number by which the flat functions know a Bayer pattern, from a name such as "BayerGR8". */
uint8_t PatternNumber(const PixelFormat& format) {
    constexpr std::string_view kPatterns = "GR RG BG GB";
    return static_cast<uint8_t>(kPatterns.find(std::string_view(format.name).substr(5, 2)) / 3);
}

uint32_t ConvertDepthKept(const BayerComponent& component, const RawFrame& frame, const PixelFormat& destination,
                          cv::Mat& picture) {
    const _KvxImage source = DescribeImage(frame.samples, *frame.format);
    _KvxImage target = DescribeImage(picture, destination);
    return KvxBayer_ConvertImage(component.Get(), &source, &target);
}

/** The component narrows 10 and 12-bit frames only, and bilinearly: the flat functions take all depths. */
uint32_t ConvertToBytes(const BayerComponent& component, const RawFrame& frame, const PixelFormat& destination,
                        cv::Mat& picture) {
    const auto convert = IsBlueFirst(destination) ? BayerToBGR_16u8u_C1C3R : BayerToRGB_16u8u_C1C3R;
    const _KvxSize size{static_cast<uint32_t>(picture.cols), static_cast<uint32_t>(picture.rows)};
    // For the component 3 and 4 mean bilinear; the flat functions would do nothing.
    const int64_t number = component.Algorithm();
    const int algorithm = number > KvxBayerAlgorithm_EdgeAware ? KvxBayerAlgorithm_Bilinear : static_cast<int>(number);
    return convert(frame.samples.ptr<uint16_t>(), {0, 0, size.width, size.height}, size,
                   static_cast<int>(frame.samples.step), frame.format->bitsPerComponent, picture.data,
                   static_cast<int>(picture.step), PatternNumber(*frame.format), algorithm);
}

/** The format that the library is asked for: 16-bit files of shallower frames are scaled afterwards. */
const PixelFormat& WorkingDestination(const PixelFormat& source, const PixelFormat& destination) {
    if (destination.bitsPerComponent == 8 || destination.bitsPerComponent == source.bitsPerComponent) {
        return destination;
    }
    return RequireFormat(fmt::format("{}{}", IsBlueFirst(destination) ? "BGR" : "RGB", source.bitsPerComponent));
}

void CheckConversion(uint32_t result, const BayerComponent& component, const PixelFormat& source,
                     const PixelFormat& destination, const std::string& name) {
    RequireSuccess(result, fmt::format("{}: {} to {} with algorithm {}", name, source.name, destination.name,
                                       AlgorithmName(component.Algorithm())));
}

}  // namespace

Picture ConvertFrame(const BayerComponent& component, const RawFrame& frame, const PixelFormat& destination,
                     const std::string& name) {
    const PixelFormat& working = WorkingDestination(*frame.format, destination);
    const bool isWide = BytesPerSample(working) == 2;
    cv::Mat picture(frame.samples.size(), isWide ? CV_16UC3 : CV_8UC3);
    const bool isNarrowing = BytesPerSample(*frame.format) == 2 && !isWide;
    const uint32_t result = isNarrowing ? ConvertToBytes(component, frame, working, picture)
                                        : ConvertDepthKept(component, frame, working, picture);
    CheckConversion(result, component, *frame.format, destination, name);
    if (!IsBlueFirst(working)) {
        cv::cvtColor(picture, picture, cv::COLOR_RGB2BGR);
    }
    if (isWide) {
        StretchToWhite(picture, LargestSample(working));
    }
    return {picture, isWide ? 65535u : 255u};
}

}  // namespace kvx::tool
