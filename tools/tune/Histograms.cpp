#include "tools/tune/Histograms.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

namespace kvx::tool {
namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kBins = 256;

struct Distribution {
    std::array<uint64_t, kBins> counts{};
    uint64_t black = 0, clipped = 0, total = 0;

    void Add(uint32_t sample, uint32_t white) {
        ++counts[std::min<size_t>(sample * kBins / (white + 1), kBins - 1)];
        black += sample == 0 ? 1 : 0;
        clipped += sample >= white ? 1 : 0;
        ++total;
    }
    Json Row(const std::string& name) const {
        const double all = static_cast<double>(std::max<uint64_t>(total, 1));
        return {{"name", name},
                {"counts", counts},
                {"clipped", static_cast<double>(clipped) / all},
                {"black", static_cast<double>(black) / all}};
    }
};

template <typename Sample>
void Count(const RawFrame& frame, std::array<Distribution, 4>& filters) {
    const uint32_t white = frame::White(frame.format);
    const uint32_t side = std::clamp(frame::TileSide(frame.format), 1u, 4u);  // which clang-tidy cannot know
    for (int row = 0; row < frame.samples.rows; ++row) {
        std::array<Distribution*, 4> ofColumn{};
        for (uint32_t column = 0; column < side; ++column) {
            ofColumn[column] = &filters[frame::FilterIndex(frame.format, row, column)];
        }
        const auto* const samples = frame.samples.ptr<Sample>(row);
        for (int column = 0; column < frame.samples.cols; ++column) {
            ofColumn[column % side]->Add(samples[column], white);
        }
    }
}

}  // namespace

Json MosaicHistogram(const RawFrame& frame) {
    std::array<Distribution, 4> filters;
    if (frame.samples.depth() == CV_8U) {
        Count<uint8_t>(frame, filters);
    } else {
        Count<uint16_t>(frame, filters);
    }
    const bool isBayer = frame.format.family == frame::Family::Bayer;
    const std::array<const char*, 4> names =
        isBayer ? std::array{"Red", "Green (red rows)", "Green (blue rows)", "Blue"}
                : std::array{"Red", "Green", "Blue", frame.format.family == frame::Family::Mono ? "Grey" : "Clear"};
    Json rows = Json::array();
    for (size_t filter = 0; filter < filters.size(); ++filter) {
        if (filters[filter].total > 0) rows.push_back(filters[filter].Row(names[filter]));
    }
    return {{"white", frame::White(frame.format)}, {"filters", rows}};
}

Json PictureHistogram(const cv::Mat& picture) {
    std::array<Distribution, 3> colours;
    for (const cv::Vec3b& pixel : cv::Mat_<cv::Vec3b>(picture)) {
        for (int colour = 0; colour < 3; ++colour) colours[colour].Add(pixel[colour], 255);
    }
    return {{"white", 255}, {"filters", {colours[2].Row("Red"), colours[1].Row("Green"), colours[0].Row("Blue")}}};
}

}  // namespace kvx::tool
