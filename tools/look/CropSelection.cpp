#include "tools/look/CropSelection.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

namespace kvx::tool {
namespace {

/** CV_32F: how far the brightest picture is from the darkest, over the channels, or the steps of the only one. */
cv::Mat Activity(const std::vector<cv::Mat>& pictures) {
    cv::Mat range;
    if (pictures.size() == 1) {
        cv::Laplacian(pictures.front(), range, CV_32F);
        range = cv::abs(range);
    } else {
        cv::Mat lowest = pictures.front().clone();
        cv::Mat highest = pictures.front().clone();
        for (const cv::Mat& picture : pictures) {
            cv::min(lowest, picture, lowest);
            cv::max(highest, picture, highest);
        }
        cv::subtract(highest, lowest, range, cv::noArray(), CV_32F);
    }
    cv::Mat activity;
    cv::transform(range, activity, cv::Matx13f(1, 1, 1));
    return activity;
}

/** Upper left corners of places that would be nearer to this one than its own size. */
cv::Rect CornersNear(const cv::Rect& place, cv::Size corners) {
    const cv::Rect near(place.x - 2 * place.width + 1, place.y - 2 * place.height + 1, 4 * place.width - 1,
                        4 * place.height - 1);
    return near & cv::Rect({0, 0}, corners);
}

}  // namespace

std::vector<cv::Rect> SelectCrops(const std::vector<cv::Mat>& pictures, cv::Size size, size_t count) {
    const cv::Size whole = pictures.front().size();
    size = {std::min(size.width, whole.width), std::min(size.height, whole.height)};
    cv::Mat sums;  // mean activity of the place at each possible upper left corner
    cv::boxFilter(Activity(pictures), sums, CV_32F, size, cv::Point(0, 0));
    sums = sums(cv::Rect(0, 0, whole.width - size.width + 1, whole.height - size.height + 1));
    std::vector<cv::Rect> places;
    while (places.size() < count) {
        double highest = 0;
        cv::Point corner;
        cv::minMaxLoc(sums, nullptr, &highest, nullptr, &corner);
        if (highest < 0) {
            break;  // all room is taken
        }
        places.emplace_back(corner, size);
        sums(CornersNear(places.back(), sums.size())).setTo(-1);
    }
    return places;
}

}  // namespace kvx::tool
