#include "tools/calibrate/FrameStack.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "tools/ToolError.h"
#include "tools/files/InputFile.h"

namespace kvx::tool {
namespace {

/** Frames whose samples can be added. */
void RequireAlike(const RawFrame& frame, const frame::Format& format, const cv::Size& size, const std::string& path) {
    if (frame.format != format || frame.samples.size() != size) {
        Fail(ExitCode::Frame, "{}: is {} of {}x{}, the first frame is {} of {}x{}: give frames of one camera setting",
             InputName(path), frame::Name(frame.format), frame.samples.cols, frame.samples.rows, frame::Name(format),
             size.width, size.height);
    }
}

double ShareOf(const cv::Mat& isCounted) {
    return cv::countNonZero(isCounted) / static_cast<double>(isCounted.total());
}

/** The lowest level at which a filter clips. */
double LowestWhite(const frame::Levels& white, const frame::Format& format) {
    const double lowest = std::ranges::min(white.ofFilters);
    return lowest > 0 ? lowest : frame::White(format);
}

}  // namespace

FrameStack StackFrames(const std::vector<std::string>& paths, const FrameRequest& request, const frame::Levels& white,
                       const std::function<void(const RawFrame&)>& visit) {
    FrameStack stack;
    cv::Mat sum, squares;
    for (const std::string& path : paths) {
        const RawFrame frame = ReadFrame(path, request).frame;
        if (stack.count == 0) {
            stack.format = frame.format;
            sum = cv::Mat::zeros(frame.samples.size(), CV_64F);
            squares = sum.clone();
        }
        RequireAlike(frame, stack.format, sum.size(), path);
        cv::accumulate(frame.samples, sum);
        cv::accumulateSquare(frame.samples, squares);
        stack.clippedShare += ShareOf(frame.samples >= LowestWhite(white, frame.format));
        stack.zeroShare += ShareOf(frame.samples == 0);
        ++stack.count;
        if (visit) {
            visit(frame);
        }
    }
    stack.clippedShare /= stack.count;
    stack.zeroShare /= stack.count;
    sum.convertTo(stack.mean, CV_32F, 1.0 / stack.count);
    if (stack.count > 1) {
        squares -= sum.mul(sum, 1.0 / stack.count);
        squares.convertTo(stack.variance, CV_32F, 1.0 / (stack.count - 1));
    }
    return stack;
}

}  // namespace kvx::tool
