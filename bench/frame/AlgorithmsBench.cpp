// Every algorithm of the frame layer, 12 bits to RGB8, as converted and finished: with gains, colour matrix and sRGB
// curve. Next to them OpenCV's bilinear conversion with the same steps, and LibRaw's interpolations.
//
// The jobs frame_<family>_12to8 and frame_<family>_12to8_finished have two frame sizes. Those with the name of an
// instruction set in front, such as AVX2_frame_bayer_12to8, use no newer one.
#include <hwy/highway.h>

#include <array>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "KvxFrame/KvxFrame.h"
#include "support/PeerRuns.h"

namespace kvx::bench {
namespace {

constexpr frame::Gains kGains = {1.6, 1, 1.4, 1};
constexpr std::array<double, 9> kMatrix = {1.6, -0.4, -0.2, -0.3, 1.6, -0.3, 0, -0.5, 1.5};

void Ours(benchmark::State& state, const frame::Format& format, const char* algorithm, const Size& size,
          bool isFinished) {
    const cv::Mat samples = DrawnFrame(size, format.bits);
    const cv::Mat image = BlackImage(size, 1);
    frame::Converter converter(format.family);
    converter.SetAlgorithm(algorithm);
    if (isFinished) {
        frame::Finish finish;
        finish.gains = kGains;
        finish.matrix = kMatrix;
        finish.tone = frame::ToneCurve::Srgb;
        converter.SetFinish(finish);
    }
    const auto width = static_cast<uint32_t>(size.width), height = static_cast<uint32_t>(size.height);
    const frame::SourceView source{
        samples.data, width, height, static_cast<ptrdiff_t>(samples.step), samples.total() * samples.elemSize(),
        format};
    const frame::DestinationView destination{image.data,
                                             width,
                                             height,
                                             static_cast<ptrdiff_t>(image.step),
                                             image.total() * image.elemSize(),
                                             frame::FormatByName("RGB8")};
    converter.Convert(source, destination);
    for ([[maybe_unused]] auto _ : state) converter.Convert(source, destination);
}

/** With a tone curve of 256 entries after the reduction to bytes, since OpenCV has no table for words. */
void OpenCv(benchmark::State& state, const Size& size, bool isFinished) {
    const cv::Mat samples = DrawnFrame(size, 12);
    cv::Mat words = BlackImage(size, 2), mixed = BlackImage(size, 2), image = BlackImage(size, 1);
    cv::Matx33d matrix;
    const double gains[] = {kGains.red, kGains.green, kGains.blue};
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) matrix(row, column) = kMatrix[3 * row + column] * gains[column];
    cv::Mat curve(1, 256, CV_8U);
    for (int value = 0; value < 256; ++value) {
        const double light = value / 255.0;
        curve.at<uint8_t>(value) = cv::saturate_cast<uint8_t>(
            255 * (light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055));
    }
    for ([[maybe_unused]] auto _ : state) {
        cv::cvtColor(samples, words, cv::COLOR_BayerBG2RGB);
        if (isFinished) cv::transform(words, mixed, matrix);
        (isFinished ? mixed : words).convertTo(image, CV_8U, 1.0 / 16);
        if (isFinished) cv::LUT(image, curve, image);
    }
}

struct Family {
    const char* job;
    const char* format;
};

constexpr Family kFamilies[] = {{"frame_bayer_12to8", "BayerRG12"},
                                {"frame_truesense_12to8", "TrueSense_BGGR_WBBW_0_12"}};

std::string JobName(const Family& family, bool isFinished) {
    return std::string(family.job) + (isFinished ? "_finished" : "");
}

void AddOurs(const std::string& prefix, const Size& size, int threads, int64_t instructionSet) {
    for (const Family& family : kFamilies)
        for (const bool isFinished : {false, true}) {
            const frame::Format format = frame::FormatByName(family.format);
            for (const frame::Algorithm& algorithm : frame::AlgorithmsOf(format.family))
                Add(prefix + JobName(family, isFinished), size, threads, algorithm.name, [=](auto& state) {
                    hwy::SetSupportedTargetsForTest(instructionSet);
                    Ours(state, format, algorithm.name, size, isFinished);
                    hwy::SetSupportedTargetsForTest(0);  // back to what the processor has
                });
        }
}

const bool s_registered = [] {
    ForEachSetting([](const Size& size, int threads) {
        AddOurs("", size, threads, 0);
        for (const bool isFinished : {false, true})
            Add(JobName(kFamilies[0], isFinished), size, threads, "opencv-bilinear",
                [=](auto& state) { OpenCv(state, size, isFinished); });
        for (const peers::Peer& peer : peers::AllPeers())
            if (std::string(peer.name).starts_with("libraw"))
                Add("frame_bayer_12to12", size, threads, peer.name,
                    [=, &peer](auto& state) { RunPeer(state, peer, 12, size); });
    });
    for (const int64_t instructionSet : hwy::SupportedAndGeneratedTargets())
        AddOurs(hwy::TargetName(instructionSet) + std::string("_"), {1920, 1200}, 1, instructionSet);
    return true;
}();

}  // namespace
}  // namespace kvx::bench
