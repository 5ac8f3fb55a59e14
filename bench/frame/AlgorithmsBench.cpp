// Every algorithm of the frame layer, 12 bits to RGB8, next to LibRaw's.
#include "KvxFrame/KvxFrame.h"
#include "support/PeerRuns.h"

namespace kvx::bench {
namespace {

void Ours(benchmark::State& state, const frame::Format& format, const char* algorithm, const Size& size,
          bool isFinished) {
    const cv::Mat samples = DrawnFrame(size, format.bits);
    const cv::Mat image = BlackImage(size, 1);
    frame::Converter converter(format.family);
    converter.SetAlgorithm(algorithm);
    if (isFinished) {
        frame::Finish finish;
        finish.gains = {1.6, 1, 1.4, 1};
        finish.matrix = {1.6, -0.4, -0.2, -0.3, 1.6, -0.3, 0, -0.5, 1.5};
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

const bool s_registered = [] {
    ForEachSetting([](const Size& size, int threads) {
        for (const auto& [job, name] :
             {std::pair("frame_bayer_12to8", "BayerRG12"), {"frame_truesense_12to8", "TrueSense_BGGR_WBBW_0_12"}})
            for (const bool isFinished : {false, true}) {
                const frame::Format format = frame::FormatByName(name);
                for (const frame::Algorithm& algorithm : frame::AlgorithmsOf(format.family))
                    Add(job + std::string(isFinished ? "_finished" : ""), size, threads, algorithm.name,
                        [=](auto& state) { Ours(state, format, algorithm.name, size, isFinished); });
            }
        for (const peers::Peer& peer : peers::AllPeers())
            if (std::string(peer.name).starts_with("libraw"))
                Add("frame_bayer_12to12", size, threads, peer.name,
                    [=, &peer](auto& state) { RunPeer(state, peer, 12, size); });
    });
    return true;
}();

}  // namespace
}  // namespace kvx::bench
