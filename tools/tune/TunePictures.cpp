// The replies with pixels and with what is counted in them.
#include <cmath>
#include <nlohmann/json.hpp>
#include <opencv2/imgproc.hpp>

#include "tools/console/Arguments.h"
#include "tools/look/Comparison.h"
#include "tools/tune/Histograms.h"
#include "tools/tune/TuneReplies.h"
#include "tools/tune/TuneService.h"

namespace kvx::tool {
namespace {

using Json = nlohmann::ordered_json;

/** The most pixels of a part: more than any screen has. */
constexpr uint64_t kMostPixels = 1 << 24;

cv::Mat ReadablePart(TunedConversion& conversion, const TuneRequest& request, cv::Rect part) {
    const auto level = static_cast<size_t>(NumberIn(request, "level", "0"));
    if (static_cast<uint64_t>(part.width) * static_cast<uint64_t>(part.height) > kMostPixels) {
        Fail(ExitCode::Usage, "a part of {}x{} pixels is too large", part.width, part.height);
    }
    return conversion.Part(level, part);
}

/** Pixels with a colour at its largest value become magenta, black ones cyan. */
void MarkClipped(cv::Mat& picture) {
    for (cv::Vec3b& pixel : cv::Mat_<cv::Vec3b>(picture)) {
        if (std::max({pixel[0], pixel[1], pixel[2]}) == 255) {
            pixel = {255, 0, 255};
        } else if (pixel == cv::Vec3b()) {
            pixel = {255, 255, 0};
        }
    }
}

}  // namespace

TuneReply TuneService::Part(const TuneRequest& request) {
    const cv::Rect part(NumberIn(request, "x"), NumberIn(request, "y"), NumberIn(request, "w"), NumberIn(request, "h"));
    const std::lock_guard lock(m_mutex);
    const auto conversion = ConversionFor(request);
    cv::Mat picture = ReadablePart(*conversion, request, part);
    if (request.query.contains("other")) {
        const double fullScale = std::max(NumberIn(request, "scale", "32"), 1);
        picture = DifferenceMap(picture, ReadablePart(*ConversionFor(request, "other"), request, part), fullScale);
    } else if (request.query.contains("mark")) {
        picture = picture.clone();
        MarkClipped(picture);
    }
    cv::Mat pixels;
    cv::cvtColor(picture, pixels, cv::COLOR_BGR2RGBA);
    return {.type = "application/octet-stream",
            .body = std::string(reinterpret_cast<const char*>(pixels.data), pixels.total() * pixels.elemSize()),
            .headers = {{"X-Seconds", fmt::format("{:.6f}", conversion->Seconds())},
                        {"X-Pixels", std::to_string(conversion->Pixels())}}};
}

TuneReply TuneService::Samples(const TuneRequest& request) {
    constexpr int kSide = 8;  // two tiles of TrueSense
    const std::lock_guard lock(m_mutex);
    const auto frame = m_frames.Get(static_cast<size_t>(NumberIn(request, "frame", "0")));
    const RawFrame& raw = frame->input.frame;
    const int x = std::min(NumberIn(request, "x"), raw.samples.cols),
              y = std::min(NumberIn(request, "y"), raw.samples.rows);
    const cv::Rect wanted(x - kSide / 2, y - kSide / 2, kSide, kSide);
    const cv::Rect place = wanted & frame->Bounds(0);
    Json rows = Json::array(), filters = Json::array();
    for (int row = place.y; row < place.br().y; ++row) {
        Json values = Json::array();
        std::string letters;
        for (int column = place.x; column < place.br().x; ++column) {
            const bool isByte = raw.samples.depth() == CV_8U;
            values.push_back(isByte ? raw.samples.at<uint8_t>(row, column) : raw.samples.at<uint16_t>(row, column));
            letters += frame::FilterAt(raw.format, row, column);
        }
        rows.push_back(values);
        filters.push_back(letters);
    }
    return JsonReply({{"x", place.x}, {"y", place.y}, {"filters", filters}, {"values", rows}});
}

TuneReply TuneService::Histogram(const TuneRequest& request) {
    constexpr int kEnough = 1024;
    const std::lock_guard lock(m_mutex);
    const auto conversion = ConversionFor(request);
    const TunedFrame& frame = conversion->Frame();
    if (TextIn(request, "of") == "mosaic") return JsonReply(MosaicHistogram(frame.input.frame));
    size_t level = 0;
    while (frame.Bounds(level).width > kEnough && level + 1 < frame.levels.size()) ++level;
    Json histogram = PictureHistogram(conversion->Part(level, frame.Bounds(level)));
    histogram["reduction"] = 1 << level;
    return JsonReply(histogram);
}

TuneReply TuneService::Psnr(const TuneRequest& request) {
    constexpr int kBand = 256;
    if (m_input.reference.empty() || NumberIn(request, "frame", "0") != 0) {
        Fail(ExitCode::Usage, "there is no reference: start with --reference");
    }
    const cv::Rect all({}, m_input.reference.size());
    double squares = 0;
    for (int row = 0; row < all.height; row += kBand) {
        const cv::Rect band = cv::Rect(0, row, all.width, kBand) & all;
        const std::lock_guard lock(m_mutex);
        squares += cv::norm(ConversionFor(request)->Part(0, band), m_input.reference(band), cv::NORM_L2SQR);
    }
    const double psnr = PeakSignalToNoise(squares, 3.0 * static_cast<double>(m_input.reference.total()));
    return JsonReply({{"psnr", std::isfinite(psnr) ? Json(psnr) : Json(nullptr)}});  // null: equal
}

}  // namespace kvx::tool
