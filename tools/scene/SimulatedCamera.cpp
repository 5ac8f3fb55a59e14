#include "tools/scene/SimulatedCamera.h"

#include <cmath>
#include <opencv2/imgproc.hpp>

#include "tools/frames/Formats.h"
#include "tools/frames/Mosaic.h"
#include "tools/scene/ChartScene.h"
#include "tools/scene/Scene.h"

namespace kvx::tool {
namespace {

constexpr int kFramesOfAKind = 4;

/** What the red, green and blue pixels see of red, green and blue light. */
const cv::Matx33f kFilters(0.62f, 0.24f, 0.02f, 0.14f, 0.62f, 0.12f, 0.01f, 0.13f, 0.30f);

RawFrame Seen(const cv::Mat_<cv::Vec3f>& light, uint64_t exposure) {
    cv::Mat sensed;
    cv::transform(light, sensed, kFilters);
    cv::cvtColor(sensed, sensed, cv::COLOR_RGB2BGR);
    Picture picture{{}, 65535};
    sensed.convertTo(picture.pixels, CV_16U, picture.maximum);
    return MakeMosaic(picture, RequireFormat("BayerRG12"),
                      {.noise = frame::NoiseAt(23.96),
                       .noiseSeed = exposure,
                       .blackLevel = 60.3,
                       .cornerLight = {0.6, 0.65, 0.55},
                       .fixedPattern = 2,
                       .hotPixels = 200,
                       .deadPixels = 50});
}

/** The drawn scene without its sRGB curve (IEC 61966-2-1). */
cv::Mat_<cv::Vec3f> LightOfScene() {
    const Picture scene = DrawScene();
    cv::Mat pixels;
    cv::cvtColor(scene.pixels, pixels, cv::COLOR_BGR2RGB);
    cv::Mat_<cv::Vec3f> light;
    pixels.convertTo(light, CV_32F, 1.0 / scene.maximum);
    light.forEach([](cv::Vec3f& pixel, const int*) {
        for (float& value : pixel.val) {
            value = value <= 0.04045f ? value / 12.92f : std::pow((value + 0.055f) / 1.055f, 2.4f);
        }
    });
    return light;
}

}  // namespace

std::vector<NamedFrame> SimulatedCameraFrames() {
    const cv::Mat_<cv::Vec3f> scene = LightOfScene();
    const cv::Size size = scene.size();
    std::vector<NamedFrame> frames;
    uint64_t exposure = 0;
    for (const auto& [name, light] : {std::pair("dark", 0.0f), std::pair("flat", 0.6f)}) {
        for (int i = 1; i <= kFramesOfAKind; ++i) {
            frames.push_back({name + std::to_string(i), Seen({size, cv::Vec3f::all(light)}, ++exposure)});
        }
    }
    const ChartScene chart = DrawChartScene({{180, 90}, {560, 120}, {590, 390}, {150, 370}}, size);
    frames.push_back({"chart", Seen(chart.light, ++exposure)});
    frames.push_back({"scene", Seen(scene, ++exposure)});
    return frames;
}

}  // namespace kvx::tool
