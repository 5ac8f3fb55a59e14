#include "tools/FrameConversion.h"

namespace kvx::tool {

frame::Family FamilyOf(const PixelFormat& source) {
    return IsTrueSense(source) ? frame::Family::TrueSense : frame::Family::Bayer;
}

frame::Family FamilyNamed(const std::string& name) {
    if (name == "bayer") {
        return frame::Family::Bayer;
    }
    if (name == "truesense") {
        return frame::Family::TrueSense;
    }
    Fail(ExitCode::Usage, "no component is called '{}': there are bayer and truesense", name);
}

frame::SourceView ViewOf(const RawFrame& frame) {
    const cv::Mat& samples = frame.samples;
    return {.data = samples.data,
            .width = static_cast<uint32_t>(samples.cols),
            .height = static_cast<uint32_t>(samples.rows),
            .stride = static_cast<ptrdiff_t>(samples.step),
            .capacity = samples.step * (samples.rows - 1) + samples.cols * samples.elemSize(),
            .format = frame::FormatByLibraryCode(frame.format->pixelType).value()};
}

Picture ConvertFrame(frame::Converter& converter, const RawFrame& frame, const PixelFormat& destination,
                     const std::string& name) {
    // Files of words have their full range, and OpenCV's order of colours.
    const bool isWide = BytesPerSample(destination) == 2;
    cv::Mat picture(frame.samples.size(), isWide ? CV_16UC3 : CV_8UC3);
    const frame::DestinationView target{.data = picture.data,
                                        .width = static_cast<uint32_t>(picture.cols),
                                        .height = static_cast<uint32_t>(picture.rows),
                                        .stride = static_cast<ptrdiff_t>(picture.step),
                                        .capacity = picture.step * picture.rows,
                                        .format = frame::FormatByName(isWide ? "BGR16" : "BGR8")};
    OrExit(ExitCode::Library, name, [&] { converter.Convert(ViewOf(frame), target); });
    return {picture, isWide ? 65535u : 255u};
}

}  // namespace kvx::tool
