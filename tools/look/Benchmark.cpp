#include "tools/look/Benchmark.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "tools/frames/Mosaic.h"
#include "tools/look/PictureView.h"
#include "tools/look/Stopwatch.h"
#include "tools/scene/Scene.h"

namespace kvx::tool {
namespace {

Picture SceneOfSize(cv::Size size) {
    Picture scene = DrawScene();
    cv::resize(scene.pixels, scene.pixels, size);
    return scene;
}

/** What pictures of most cameras go through. */
frame::Finish CameraFinish() {
    frame::Finish finish;
    finish.gains = {1.9, 1, 1.6, 1};
    finish.matrix = {1.6, -0.4, -0.2, -0.3, 1.6, -0.3, 0, -0.5, 1.5};
    finish.tone = frame::ToneCurve::Srgb;
    return finish;
}

/** The algorithms of a family that the plan names; mono frames have one way, without a name. */
std::vector<std::string> AlgorithmsFor(frame::Family family, const std::vector<std::string>& chosen) {
    std::vector<std::string> names;
    for (const frame::Algorithm& algorithm : frame::AlgorithmsOf(family)) {
        if (chosen.empty() || std::find(chosen.begin(), chosen.end(), algorithm.name) != chosen.end()) {
            names.emplace_back(algorithm.name);
        }
    }
    if (frame::AlgorithmsOf(family).empty()) {
        names.emplace_back();
    }
    return names;
}

}  // namespace

std::vector<Throughput> MeasureThroughput(const BenchmarkPlan& plan) {
    std::vector<Throughput> results;
    for (const cv::Size size : plan.sizes) {
        const Picture scene = SceneOfSize(size);
        const auto width = static_cast<uint32_t>(size.width);
        const auto height = static_cast<uint32_t>(size.height);
        for (const frame::Format& format : plan.formats) {
            const RawFrame mosaic = MakeMosaic(scene, frame::Unpacked(format));
            const Bytes bytes = EncodePacked(mosaic.samples, format, frame::RowPadding::Line);
            const frame::SourceView source{.data = bytes.data(),
                                           .width = width,
                                           .height = height,
                                           .stride = static_cast<ptrdiff_t>(frame::RowBytes(format, width)),
                                           .capacity = bytes.size(),
                                           .format = format};
            cv::Mat picture(size, CV_8UC3);
            for (const bool isFinished : {true, false}) {
                for (const std::string& algorithm : AlgorithmsFor(format.family, plan.algorithms)) {
                    frame::Converter converter(format.family);
                    converter.SetThreads(plan.threads);
                    if (!algorithm.empty()) {
                        converter.SetAlgorithm(algorithm);
                    }
                    if (isFinished) {
                        converter.SetFinish(CameraFinish());
                    }
                    const double seconds =
                        MedianSeconds(plan.budget, [&] { converter.Convert(source, PictureView(picture)); });
                    results.push_back({format, width, height, algorithm, isFinished, bytes.size(), seconds});
                }
            }
        }
    }
    return results;
}

}  // namespace kvx::tool
