// The correction of a mosaic by a camera profile, in rows, next to a copy and to the bilinear conversion.
#include "KvxFrame/KvxFrame.h"
#include "frame/camera/MosaicCorrection.h"
#include "frame/samples/SampleRow.h"
#include "support/Frames.h"

namespace kvx::bench {
namespace {

/** A camera with everything that is corrected: one pixel of ten thousand is defective. */
std::shared_ptr<frame::CameraProfile> MakeCamera(const Size& size) {
    auto camera = std::make_shared<frame::CameraProfile>();
    camera->format = frame::FormatByName("BayerRG12");
    camera->width = static_cast<uint32_t>(size.width);
    camera->height = static_cast<uint32_t>(size.height);
    camera->blackLevel = frame::Levels(64);
    camera->gains = frame::Gains{1.9, 1, 1.4, 1};
    camera->noise = frame::SensorNoise{{0.5, 9}, {0.5, 9}};
    camera->shading = {33, 25, {}};
    for (auto& gains : camera->shading.gains)
        for (int node = 0; node < 33 * 25; ++node) gains.push_back(1 + static_cast<float>(node % 33) / 80);
    camera->darkFrame.assign(size_t{camera->width} * camera->height, 1040);
    for (uint32_t pixel = 5000; pixel < camera->darkFrame.size(); pixel += 10007)
        camera->hotPixels.push_back({pixel % camera->width, pixel / camera->width});
    return camera;
}

enum class Pass { Copy, Balance, Correction, Defects, DefectsAuto, Bilinear };

void Run(benchmark::State& state, const Size& size, Pass pass) {
    const auto camera = MakeCamera(size);
    const cv::Mat samples = DrawnFrame(size, 12);
    const frame::SourceView source{samples.data,
                                   camera->width,
                                   camera->height,
                                   static_cast<ptrdiff_t>(samples.step),
                                   samples.total() * samples.elemSize(),
                                   *camera->format};
    frame::MosaicCorrection correction;
    correction.SetProfile(camera, std::nullopt);
    correction.SetDefects(pass == Pass::DefectsAuto ? frame::Defects::Auto : frame::Defects::Listed);
    correction.Prepare(source);
    const frame::Finish finish = frame::FinishWith(*camera, {}, source.format);
    const frame::Balance balance(source, finish, finish.gains, 16);
    std::vector<uint16_t> mosaic(samples.total());
    const auto convert = [&] {
        for (uint32_t row = 0; row < source.height; ++row) {
            uint16_t* const words = mosaic.data() + size_t{row} * source.width;
            frame::ReadRow(source, row, words);
            if (pass == Pass::Balance) frame::BalanceRow(balance.OfRow(row), words, words, source.width);
            if (pass >= Pass::Correction)
                frame::CorrectRow(correction.OfRow(row), balance.OfRow(row), words, source.width);
        }
        if (pass >= Pass::Defects) correction.RepairDefects(source, balance, mosaic.data());
    };
    const cv::Mat image = BlackImage(size, 1);
    frame::Converter converter(frame::Family::Bayer);
    const frame::DestinationView picture{image.data,
                                         source.width,
                                         source.height,
                                         static_cast<ptrdiff_t>(image.step),
                                         image.total() * image.elemSize(),
                                         frame::FormatByName("RGB8")};
    for ([[maybe_unused]] auto _ : state) pass == Pass::Bilinear ? converter.Convert(source, picture) : convert();
}

const bool s_registered = [] {
    for (const Size& size : {Size{1920, 1200}, Size{4096, 3072}})
        for (const auto& [name, pass] : {std::pair("copy", Pass::Copy),
                                         {"balance", Pass::Balance},
                                         {"correction", Pass::Correction},
                                         {"correction_defects", Pass::Defects},
                                         {"correction_defects_auto", Pass::DefectsAuto},
                                         {"bilinear", Pass::Bilinear}}) {
            const Pass chosen = pass;
            Add("camera_bayer_12", size, 1, name, [=](auto& state) { Run(state, size, chosen); });
        }
    return true;
}();

}  // namespace
}  // namespace kvx::bench
