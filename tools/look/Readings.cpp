#include "tools/look/Readings.h"

#include <algorithm>
#include <array>
#include <map>
#include <opencv2/imgproc.hpp>

namespace kvx::tool {
namespace {

struct Size {
    uint32_t width;
    uint32_t height;
};

constexpr uint64_t kLargestSide = 1u << 16;

/** The frame that fills a file, its rows starting with a byte or following each other bit by bit; or nothing. */
std::optional<frame::SourceView> ViewThatFills(const Bytes& content, const frame::Format& layout, const Size& size) {
    const uint64_t rowBytes = frame::RowBytes(layout, size.width);
    const bool isPadded = rowBytes * size.height == content.size();
    if (!isPadded && frame::ImageBytes(layout, size.width, size.height, 0) != content.size()) {
        return std::nullopt;
    }
    return frame::SourceView{.data = content.data(),
                             .width = size.width,
                             .height = size.height,
                             .stride = isPadded ? static_cast<ptrdiff_t>(rowBytes) : 0,
                             .capacity = content.size(),
                             .format = layout};
}

/** Sizes to try: the height follows from the width. */
std::vector<Size> SizesToTry(const frame::Format& layout, const KnownFacts& known, uint64_t bytes) {
    constexpr double kWidest = 2.4;
    const uint64_t first = known.width.value_or(4);
    const uint64_t last = known.width.value_or(kLargestSide);
    std::vector<Size> sizes;
    for (uint64_t width = first; width >= 1 && width <= std::min(last, kLargestSide); width += 4) {
        // Rows may share bytes: more precisely by eight of them.
        const uint64_t height =
            known.height.value_or(8 * bytes / frame::RowBytes(layout, 8 * static_cast<uint32_t>(width)));
        const double aspect = static_cast<double>(width) / std::max(1.0, static_cast<double>(height));
        if (height >= 1 && height <= kLargestSide &&
            (known.width || known.height || (aspect >= 1 && aspect <= kWidest))) {
            sizes.push_back({static_cast<uint32_t>(width), static_cast<uint32_t>(height)});
        }
    }
    return sizes;
}

/** Whether packing the samples gives the file again: all bits that they do not use are zero. */
bool HasNoOtherBits(const Bytes& content, const frame::SourceView& view, const RawFrame& frame) {
    double largest = 0;
    cv::minMaxLoc(frame.samples, nullptr, &largest);
    const auto padding = view.stride == 0 ? frame::RowPadding::Image : frame::RowPadding::Line;
    return largest <= frame::White(view.format) && EncodePacked(frame.samples, view.format, padding) == content;
}

/** The mean difference of any two samples, from their distribution. */
double MeanDifference(const cv::Mat& samples) {
    constexpr int kValues = 1 << 16;
    cv::Mat words;
    samples.convertTo(words, CV_16U);
    cv::Mat counts;
    const std::array<float, 2> range = {0, kValues};
    const float* ranges = range.data();
    cv::calcHist(&words, 1, std::array{0}.data(), cv::noArray(), counts, 1, &kValues, &ranges);
    double below = 0;
    double difference = 0;
    for (int value = 0; value < kValues; ++value) {
        below += counts.at<float>(value) / static_cast<double>(words.total());
        difference += 2 * below * (1 - below);
    }
    return difference;
}

std::vector<frame::Format> Layouts(const KnownFacts& known) {
    std::vector<frame::Format> layouts;
    for (const auto layout : {frame::Layout::Plain, frame::Layout::MsbAligned, frame::Layout::BigEndian,
                              frame::Layout::Pfnc, frame::Layout::GigE, frame::Layout::Mipi}) {
        for (const uint8_t bits : std::array<uint8_t, 5>{8, 10, 12, 14, 16}) {
            const frame::Format format{frame::Family::Mono, bits, layout};
            if (frame::IsValid(format) && known.bits.value_or(bits) == bits) {
                layouts.push_back(format);
            }
        }
    }
    return layouts;
}

/** Of readings in which a sample takes the same room only those of the smallest depth are plausible. */
void DropNeedlessDepths(std::vector<Reading>& readings) {
    std::map<uint64_t, uint8_t> smallest;
    const auto room = [](const Reading& reading) { return frame::RowBytes(reading.layout, 8); };
    for (const Reading& reading : readings) {
        uint8_t& bits = smallest.try_emplace(room(reading), reading.layout.bits).first->second;
        bits = std::min(bits, reading.layout.bits);
    }
    const auto isNeedless = [&](const Reading& reading) { return reading.layout.bits > smallest.at(room(reading)); };
    readings.erase(std::remove_if(readings.begin(), readings.end(), isNeedless), readings.end());
}

}  // namespace

double Continuity(const cv::Mat& samples) {
    constexpr int kRows = 512;
    constexpr std::array kLags = {2, 4};
    const int first = std::max(0, (samples.rows - kRows) / 2);
    const cv::Mat middle = samples.rowRange(first, std::min(samples.rows, first + kRows));
    const double far = MeanDifference(middle);
    if (std::min(middle.rows, middle.cols) <= kLags.back() || far == 0) {
        return 0;
    }
    double near = 0;
    for (const int lag : kLags) {
        const cv::Mat upper = middle.rowRange(0, middle.rows - lag);
        const cv::Mat left = middle.colRange(0, middle.cols - lag);
        near += cv::norm(upper, middle.rowRange(lag, middle.rows), cv::NORM_L1) / static_cast<double>(upper.total());
        near += cv::norm(left, middle.colRange(lag, middle.cols), cv::NORM_L1) / static_cast<double>(left.total());
    }
    return 1 - near / (2 * kLags.size()) / far;
}

uint8_t BitsUsed(const cv::Mat& samples) {
    if (samples.depth() == CV_8U) {
        return 8;
    }
    double largest = 0;
    cv::minMaxLoc(samples, nullptr, &largest);
    uint8_t bits = 10;
    while (bits < 16 && largest > (1u << bits) - 1) {
        bits += 2;
    }
    return bits;
}

std::vector<Reading> ReadingsOf(const Bytes& content, const KnownFacts& known, size_t count) {
    std::vector<Reading> readings;
    for (const frame::Format& layout : Layouts(known)) {
        for (const Size& size : SizesToTry(layout, known, content.size())) {
            const auto view = ViewThatFills(content, layout, size);
            if (!view) {
                continue;
            }
            const RawFrame frame = UnpackFrame(*view);
            if (!HasNoOtherBits(content, *view, frame)) {
                break;  // so it is with every size
            }
            readings.push_back({layout, frame.samples, Continuity(frame.samples)});
        }
    }
    DropNeedlessDepths(readings);
    std::stable_sort(readings.begin(), readings.end(),
                     [](const Reading& a, const Reading& b) { return a.continuity > b.continuity; });
    readings.resize(std::min(readings.size(), count));
    return readings;
}

}  // namespace kvx::tool
