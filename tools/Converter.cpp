#include "tools/Converter.h"

#include <opencv2/imgproc.hpp>

#include "tools/BayerConverter.h"
#include "tools/SampleScale.h"
#include "tools/ToolError.h"
#include "tools/TrueSenseConverter.h"

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

/** The format that the library is asked for: 16-bit files of shallower frames are scaled afterwards. */
const PixelFormat& WorkingDestination(const PixelFormat& source, const PixelFormat& destination) {
    if (destination.bitsPerComponent == 8 || destination.bitsPerComponent == source.bitsPerComponent) {
        return destination;
    }
    return RequireFormat(fmt::format("{}{}", IsBlueFirst(destination) ? "BGR" : "RGB", source.bitsPerComponent));
}

}  // namespace

Picture Converter::Convert(const RawFrame& frame, const PixelFormat& destination, const std::string& name) {
    const PixelFormat& working = WorkingDestination(*frame.format, destination);
    const bool isWide = BytesPerSample(working) == 2;
    cv::Mat picture(frame.samples.size(), isWide ? CV_16UC3 : CV_8UC3);
    _KvxImage target = DescribeImage(picture, working);
    RequireSuccess(Call(DescribeImage(frame.samples, *frame.format), target),
                   fmt::format("{}: {} to {} with algorithm {}", name, frame.format->name, destination.name,
                               AlgorithmName(m_algorithms, Algorithm())));
    if (!IsBlueFirst(working)) {
        cv::cvtColor(picture, picture, cv::COLOR_RGB2BGR);
    }
    if (isWide) {
        StretchToWhite(picture, White(working.bitsPerComponent));
    }
    return {picture, isWide ? 65535u : 255u};
}

std::unique_ptr<Converter> MakeConverter(const PixelFormat& source) {
    return MakeConverter(IsTrueSense(source) ? "truesense" : "bayer");
}

std::unique_ptr<Converter> MakeConverter(const std::string& family) {
    if (family == "bayer") {
        return std::make_unique<BayerConverter>();
    }
    if (family == "truesense") {
        return std::make_unique<TrueSenseConverter>();
    }
    Fail(ExitCode::Usage, "no component is called '{}': there are bayer and truesense", family);
}

}  // namespace kvx::tool
