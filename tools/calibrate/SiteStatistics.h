#pragma once

#include <opencv2/core.hpp>

#include "KvxFrame/CameraProfile.h"
#include "KvxFrame/Format.h"

namespace kvx::tool {

/** A median of the 24 nearest sites at the same place of the tile, for each site. @param map CV_32F */
cv::Mat LocalMedian(const cv::Mat& map, const frame::Format& format);

/** CV_8U: 255 at sites of these filters, as in FilterIndex(), 0 elsewhere. */
cv::Mat SitesOfFilter(const frame::Format& format, const cv::Size& size, size_t filter);

/** CV_8U: 255 at clear sites (of mono frames: everywhere), 0 elsewhere. */
cv::Mat ClearSites(const frame::Format& format, const cv::Size& size);

/** Standard deviation of the values where `mask` is not 0, without those beyond five deviations. */
double ClippedDeviation(const cv::Mat& map, const cv::Mat& mask);

/** The sites at which a mask is not 0, row by row. */
std::vector<frame::Site> SitesOf(const cv::Mat& mask);

}  // namespace kvx::tool
