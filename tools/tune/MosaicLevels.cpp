#include "tools/tune/MosaicLevels.h"

#include <algorithm>

#include "frame/base/Team.h"

namespace kvx::tool {
namespace {

template <typename Sample>
cv::Mat Means(const cv::Mat& samples, int side) {
    cv::Mat means(std::max(samples.rows / 2, 1), std::max(samples.cols / 2, 1), samples.type());
    frame::ForRows(means.rows, frame::TeamForSamples(means.total()), [&](uint32_t rowNumber, int) {
        const int row = static_cast<int>(rowNumber);
        const int upper = row / side * 2 * side + row % side;
        const auto* const above = samples.ptr<Sample>(std::min(upper, samples.rows - 1));
        const auto* const below = samples.ptr<Sample>(upper + side < samples.rows ? upper + side : upper);
        auto* const mean = means.ptr<Sample>(row);
        for (int column = 0; column < means.cols; ++column) {
            const int left = column / side * 2 * side + column % side;
            const int right = left + side < samples.cols ? left + side : left;
            mean[column] = static_cast<Sample>((above[left] + above[right] + below[left] + below[right] + 2) / 4);
        }
    });
    return means;
}

}  // namespace

RawFrame Halved(const RawFrame& mosaic) {
    const int side = static_cast<int>(frame::TileSide(mosaic.format));
    return {mosaic.format, mosaic.samples.depth() == CV_8U ? Means<uint8_t>(mosaic.samples, side)
                                                           : Means<uint16_t>(mosaic.samples, side)};
}

frame::CameraProfile Halved(const frame::CameraProfile& profile) {
    frame::CameraProfile half = profile;
    half.hotPixels.clear();
    half.deadPixels.clear();
    half.width = std::max(profile.width / 2, 1u);
    half.height = std::max(profile.height / 2, 1u);
    if (!profile.darkFrame.empty()) {
        const cv::Mat dark(static_cast<int>(profile.height), static_cast<int>(profile.width), CV_16U,
                           const_cast<uint16_t*>(profile.darkFrame.data()));
        const cv::Mat means = Halved(RawFrame{*profile.format, dark}).samples;
        half.darkFrame.assign(means.begin<uint16_t>(), means.end<uint16_t>());
    }
    return half;
}

}  // namespace kvx::tool
