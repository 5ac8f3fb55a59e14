#include "tools/scene/Scene.h"

#include <array>
#include <opencv2/imgproc.hpp>

#include "tools/scene/ScenePanels.h"

namespace kvx::tool {
namespace {

const cv::Size kSceneSize(768, 512);
/** The canvas is larger than the scene, so that slanted edges become smooth and ramps get more than 8 bits. */
constexpr int kOversampling = 2;

const cv::Scalar kInk(40, 30, 25);
const cv::Scalar kPaper(225, 235, 240);

cv::Mat Panel(cv::Mat& canvas, int x, int y, int width, int height) {
    return canvas(cv::Rect(x * kOversampling, y * kOversampling, width * kOversampling, height * kOversampling));
}

void DrawBackground(cv::Mat& canvas) {
    for (int row = 0; row < canvas.rows; ++row) {
        const double share = static_cast<double>(row) / canvas.rows;
        canvas.row(row).setTo(cv::Scalar(70 - 30 * share, 58 - 26 * share, 50 - 24 * share));
    }
}

void DrawTitle(cv::Mat& canvas) {
    cv::putText(canvas, "KvxDemosaicing", cv::Point(16, 36) * kOversampling, cv::FONT_HERSHEY_DUPLEX,
                0.95 * kOversampling, cv::Scalar::all(240), kOversampling, cv::LINE_AA);
    cv::putText(canvas, "test scene, 768 x 512", cv::Point(292, 36) * kOversampling, cv::FONT_HERSHEY_SIMPLEX,
                0.5 * kOversampling, cv::Scalar(120, 200, 250), kOversampling, cv::LINE_AA);
}

void DrawLinePanels(cv::Mat& canvas) {
    struct Lines {
        double pitch;
        double degrees;
        cv::Scalar ink;
    };
    const cv::Scalar red(40, 40, 190);
    const cv::Scalar blue(170, 70, 20);
    const std::array<Lines, 10> panels = {{{2, 0, kInk},
                                           {3, 0, kInk},
                                           {4, 0, kInk},
                                           {3, 90, kInk},
                                           {5, 90, kInk},
                                           {3, 45, kInk},
                                           {4, -30, kInk},
                                           {6, 15, kInk},
                                           {4, 60, red},
                                           {5, -75, blue}}};
    constexpr int kStep = 74;
    for (size_t index = 0; index < panels.size(); ++index) {
        const auto& [pitch, degrees, ink] = panels[index];
        const int x = 16 + static_cast<int>(index) * kStep;
        DrawLines(Panel(canvas, x, 304, kStep - 4, 70), pitch * kOversampling, degrees, ink, kPaper);
    }
}

}  // namespace

Picture DrawScene() {
    cv::Mat canvas(kSceneSize * kOversampling, CV_8UC3);
    DrawBackground(canvas);
    DrawTitle(canvas);
    DrawColourChart(Panel(canvas, 16, 56, 348, 232));
    DrawZonePlate(Panel(canvas, 376, 56, 232, 232), 2.5 * kOversampling);
    DrawStar(Panel(canvas, 620, 56, 132, 132), 36);
    DrawText(Panel(canvas, 620, 200, 132, 88), "Mosaic 8642", kInk, kPaper);
    DrawLinePanels(canvas);
    DrawRamps(Panel(canvas, 16, 390, 736, 106));

    Picture scene{cv::Mat(), 65535};
    canvas.convertTo(canvas, CV_16U, 257);
    cv::resize(canvas, scene.pixels, kSceneSize, 0, 0, cv::INTER_AREA);
    return scene;
}

}  // namespace kvx::tool
