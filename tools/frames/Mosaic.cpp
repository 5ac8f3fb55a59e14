#include "tools/frames/Mosaic.h"

namespace kvx::tool {
namespace {

/** Pictures are grey, or blue first. */
frame::Format FormatOf(const cv::Mat& pixels) {
    frame::Format format;
    format.bits = pixels.depth() == CV_8U ? 8 : 16;
    if (pixels.channels() == 3) {
        format.family = frame::Family::Colour;
        format.order = frame::Order::Bgr;
    }
    return format;
}

}  // namespace

RawFrame MakeMosaic(const Picture& picture, const frame::Format& format, frame::Sensor sensor) {
    RawFrame mosaic = MakeRawFrame(format, picture.pixels.size());
    sensor.pictureWhite = picture.maximum;
    frame::MakeMosaic(ViewOf(picture.pixels, FormatOf(picture.pixels)), DestinationOf(mosaic), sensor);
    return mosaic;
}

}  // namespace kvx::tool
