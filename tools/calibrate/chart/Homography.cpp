#include "tools/calibrate/chart/Homography.h"

#include <cmath>

namespace kvx::tool {
namespace {

/** Moves the middle to 0 and the mean distance from it to 1: the equations are then well conditioned (Hartley 1997). */
cv::Matx33d Normalisation(const std::vector<cv::Point2d>& places) {
    cv::Point2d middle;
    for (const cv::Point2d& place : places) {
        middle += place / static_cast<double>(places.size());
    }
    double distance = 0;
    for (const cv::Point2d& place : places) {
        distance += std::hypot(place.x - middle.x, place.y - middle.y) / static_cast<double>(places.size());
    }
    const double scale = 1 / std::max(distance, 1e-12);
    return {scale, 0, -scale * middle.x, 0, scale, -scale * middle.y, 0, 0, 1};
}

}  // namespace

cv::Matx33d FitHomography(const std::vector<cv::Point2d>& from, const std::vector<cv::Point2d>& to) {
    const cv::Matx33d normalFrom = Normalisation(from);
    const cv::Matx33d normalTo = Normalisation(to);
    cv::Mat_<double> equations(0, 9);
    for (size_t i = 0; i < from.size(); ++i) {
        const cv::Point2d p = Projected(normalFrom, from[i]);
        const cv::Point2d q = Projected(normalTo, to[i]);
        equations.push_back(cv::Mat_<double>({1, 9}, {p.x, p.y, 1, 0, 0, 0, -q.x * p.x, -q.x * p.y, -q.x}));
        equations.push_back(cv::Mat_<double>({1, 9}, {0, 0, 0, p.x, p.y, 1, -q.y * p.x, -q.y * p.y, -q.y}));
    }
    cv::Mat_<double> solution;
    cv::SVD::solveZ(equations, solution);
    return normalTo.inv() * cv::Matx33d(solution.ptr<double>()) * normalFrom;
}

}  // namespace kvx::tool
