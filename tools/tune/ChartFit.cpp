#include "tools/tune/ChartFit.h"

#include <nlohmann/json.hpp>

#include "tools/calibrate/chart/ChartDetector.h"
#include "tools/calibrate/chart/ChartFrame.h"
#include "tools/calibrate/chart/ColourFit.h"

namespace kvx::tool {
namespace {

using Json = nlohmann::ordered_json;

/** Larger frames are halved for the search, which needs no more; the patches are measured in the frame itself. */
constexpr size_t kSearchedPixels = 2'000'000;

ChartPlace Locate(RawFrame light, const std::optional<std::array<cv::Point2d, 4>>& corners, const std::string& name) {
    double scale = 1;
    while (light.samples.total() > kSearchedPixels) {
        light = Halved(light);
        scale *= 2;
    }
    const cv::Mat_<cv::Vec3f> linear = LinearPicture(light, name);
    std::optional<ChartPlace> place;
    if (corners) {
        std::array<cv::Point2d, 4> scaled = *corners;
        for (cv::Point2d& corner : scaled) corner /= scale;
        place = ChartAt(scaled, linear);
        if (place->agreement < kLeastAgreementAtCorners) {
            Fail(ExitCode::Frame, "{}: the colours at the corners are not those of a chart", name);
        }
    } else {
        place = FindChart(linear);
        if (!place) Fail(ExitCode::Frame, "{}: no chart found: drag the corners to its patches", name);
    }
    place->toFrame = cv::Matx33d(scale, 0, 0, 0, scale, 0, 0, 0, 1) * place->toFrame;
    return *place;
}

Json ErrorJson(double error) {
    return error < 0 ? Json(nullptr) : Json(error);
}

}  // namespace

Json FitChart(const TunedConversion& conversion, const std::optional<std::array<cv::Point2d, 4>>& corners) {
    const TunedFrame& frame = conversion.Frame();
    if (frame.input.frame.format.family == frame::Family::Mono) {
        Fail(ExitCode::Frame, "{}: is a mono frame, which has no colours to calibrate", frame.name);
    }
    const auto& camera = conversion.Settings().convert.finish.camera;
    const RawFrame light = LightOf(frame.input.frame, camera ? *camera : frame::CameraProfile(),
                                   conversion.Plan().finish.value_or(frame::Finish()), frame.name);
    const ChartPlace place = Locate(light, corners, frame.name);
    const ColourFit fit = FitColours({MeasurePatches(light, place.toFrame, frame.name)}, {frame.name});
    Json places = Json::array(), patches = Json::array();
    for (const cv::Point2d& corner : ChartCorners(place.toFrame)) {
        places.push_back({corner.x, corner.y});
    }
    const ChartResult& result = fit.charts.front();
    for (int patch = 0; patch < kChartPatches; ++patch) {
        patches.push_back({{"name", ChartPatches()[patch].name},
                           {"before", ErrorJson(result.before[patch])},
                           {"after", ErrorJson(result.after[patch])}});
    }
    return {{"corners", places},
            {"gains", {fit.gains.red, fit.gains.green, fit.gains.blue}},
            {"matrix", std::vector<double>(fit.matrix.val, fit.matrix.val + 9)},
            {"before", MeanError(result.before)},
            {"after", MeanError(result.after)},
            {"patches", patches}};
}

}  // namespace kvx::tool
