#include "tools/calibrate/chart/ChartFrame.h"

#include "KvxFrame/Converter.h"
#include "tools/frames/FrameError.h"

namespace kvx::tool {

RawFrame LightOf(const RawFrame& frame, const frame::CameraProfile& profile, const frame::Finish& levels,
                 const std::string& name) {
    std::vector<uint16_t> samples =
        WithExitCode(ExitCode::Usage, name, [&] { return frame::CorrectedMosaic(ViewOf(frame), profile, levels); });
    const uint8_t bits = frame.format.family == frame::Family::TrueSense ? 14 : 16;  // the most that there are
    RawFrame light{frame::WithBits(frame.format, bits), {}};
    const cv::Mat words(frame.samples.size(), CV_16U, samples.data());
    words.convertTo(light.samples, CV_16U, frame::White(light.format) / 65535.0);
    return light;
}

cv::Mat_<cv::Vec3f> LinearPicture(const RawFrame& light, const std::string& name) {
    cv::Mat_<cv::Vec3w> words(light.samples.size());
    const frame::DestinationView destination{.data = words.data,
                                             .width = static_cast<uint32_t>(words.cols),
                                             .height = static_cast<uint32_t>(words.rows),
                                             .stride = static_cast<ptrdiff_t>(words.step),
                                             .capacity = words.step * words.rows,
                                             .format = {.family = frame::Family::Colour, .bits = 16}};
    frame::Options options;
    options.finish = frame::Finish();  // no matrix or curve of the component's own
    WithExitCode(ExitCode::Library, name, [&] { frame::Convert(ViewOf(light), destination, options); });
    cv::Mat_<cv::Vec3f> linear;
    words.convertTo(linear, CV_32F, 1.0 / 65535);
    return linear;
}

}  // namespace kvx::tool
