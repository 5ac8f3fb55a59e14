#include "tools/calibrate/chart/ChartFrame.h"

#include <algorithm>
#include <numeric>
#include <opencv2/imgproc.hpp>

#include "KvxFrame/Converter.h"
#include "tools/frames/FrameError.h"

namespace kvx::tool {
namespace {

/** Filters differ little, and only measurements need their own levels. */
double Mean(const frame::Levels& levels) {
    return std::accumulate(levels.ofFilters.begin(), levels.ofFilters.end(), 0.0) /
           static_cast<double>(levels.ofFilters.size());
}

}  // namespace

cv::Mat_<cv::Vec3f> LinearPicture(const RawFrame& frame, const ChartLevels& levels, const std::string& name) {
    cv::Mat_<cv::Vec3w> words(frame.samples.size());
    const frame::DestinationView destination{.data = words.data,
                                             .width = static_cast<uint32_t>(words.cols),
                                             .height = static_cast<uint32_t>(words.rows),
                                             .stride = static_cast<ptrdiff_t>(words.step),
                                             .capacity = words.step * words.rows,
                                             .format = {.family = frame::Family::Colour, .bits = 16}};
    frame::Options options;
    options.finish = frame::Finish();  // no matrix or curve of the component's own
    WithExitCode(ExitCode::Library, name, [&] { frame::Convert(ViewOf(frame), destination, options); });
    // 16-bit values of black and white, as the conversion scales them.
    const double scale = 65535.0 / frame::White(frame.format);
    const double black = Mean(levels.black) * scale;
    const double white = Mean(levels.white) * scale;
    cv::Mat_<cv::Vec3f> linear;
    words.convertTo(linear, CV_32F, 1 / (white - black), -black / (white - black));
    cv::threshold(linear, linear, 0, 0, cv::THRESH_TOZERO);
    return linear;
}

}  // namespace kvx::tool
