#include "tools/frames/FrameConversion.h"

#include "tools/frames/FrameError.h"

namespace kvx::tool {

frame::Family FamilyNamed(const std::string& name) {
    if (name == "bayer") {
        return frame::Family::Bayer;
    }
    if (name == "truesense") {
        return frame::Family::TrueSense;
    }
    Fail(ExitCode::Usage, "unknown component '{}': choose bayer or truesense", name);
}

Picture ConvertFrame(frame::Converter& converter, const frame::SourceView& source, const frame::Format& destination,
                     const std::string& name) {
    // Files of words have their full range, and OpenCV's order of colours.
    const bool isWide = destination.bits > 8;
    cv::Mat picture(static_cast<int>(source.height), static_cast<int>(source.width), isWide ? CV_16UC3 : CV_8UC3);
    const frame::DestinationView target{
        .data = picture.data,
        .width = source.width,
        .height = source.height,
        .stride = static_cast<ptrdiff_t>(picture.step),
        .capacity = picture.step * picture.rows,
        .format = {
            .family = frame::Family::Colour, .bits = isWide ? uint8_t{16} : uint8_t{8}, .order = frame::Order::Bgr}};
    WithExitCode(ExitCode::Library, name, [&] { converter.Convert(source, target); });
    return {picture, isWide ? 65535u : 255u};
}

}  // namespace kvx::tool
