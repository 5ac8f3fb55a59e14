#pragma once

#include <opencv2/core.hpp>

#include "KvxFrame/View.h"

namespace kvx::tool {

/** A view of a CV_8UC3 picture, blue first, as a destination. */
inline frame::DestinationView PictureView(cv::Mat& picture) {
    return {.data = picture.data,
            .width = static_cast<uint32_t>(picture.cols),
            .height = static_cast<uint32_t>(picture.rows),
            .stride = static_cast<ptrdiff_t>(picture.step),
            .capacity = picture.step * picture.rows,
            .format = {.family = frame::Family::Colour, .order = frame::Order::Bgr}};
}

}  // namespace kvx::tool
