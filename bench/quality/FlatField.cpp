#include "quality/FlatField.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "KvxFrame/Mosaic.h"

namespace kvx::quality {
namespace {

const FlatField kFlatFields[] = {
    {"grey 128", {128, 128, 128}},     {"grey 512", {512, 512, 512}}, {"grey 1500", {1500, 1500, 1500}},
    {"grey 3000", {3000, 3000, 3000}}, {"orange", {600, 1200, 2400}}, {"dark blue", {700, 300, 200}},
};

/** Spreads a part of the 12-bit range over all 8-bit values, so that rounding does not hide the noise. */
class Window {
public:
    static Window Whole() {
        return {0, 4096};
    }
    /** Rounds `halfWidth` up so that bytes divide the window evenly. */
    static Window Around(int level, double halfWidth) {
        const auto width = static_cast<int>(std::bit_ceil(static_cast<unsigned>(std::max(2 * halfWidth, 128.0))));
        return {level - width / 2, width};
    }

    const uint16_t* Tone() const {
        return m_tone.data();
    }
    /** The middle of the 12-bit values that map to a byte. */
    cv::Mat Undo(const cv::Mat& bytes) const {
        const double step = m_width / 256.0;
        cv::Mat values;
        bytes.convertTo(values, CV_64F, step, m_start + std::max(0.0, (step - 1) / 2));
        return values;
    }

private:
    Window(int start, int width) : m_start(start), m_width(width) {
        for (int value = 0; value < static_cast<int>(m_tone.size()); ++value)
            m_tone[static_cast<size_t>(value)] =
                static_cast<uint16_t>(std::clamp((value - start) * 4096 / width, 0, 4095));
    }

    int m_start, m_width;
    std::array<uint16_t, KVX_TONE_TABLE_SIZE> m_tone;
};

/** A window around one channel of a field and all its noise. */
Window WindowFor(const FlatField& field, int channel, const Setting& setting) {
    const tagTrueSenseParam& params = setting.params;
    const bool dependsOnDisplay =
        (params.sharpnessEnable != 0 && params.maxSharpen != 0) || params.highLumaNoise != params.lowLumaNoise;
    if (dependsOnDisplay) return Window::Whole();
    if (!setting.analogGain) return Window::Around(field.levels[channel], 0);
    // Wide enough for the noise of all channels, since colour differences mix them.
    const double brightest = *std::max_element(field.levels.val, field.levels.val + 3);
    const double noise = frame::NoiseAt(setting.params, *setting.analogGain).pan.DeviationAt(brightest);
    return Window::Around(field.levels[channel], 8 * noise);
}

/** One channel of the restored field, in 12-bit codes. */
cv::Mat RestoredChannel(const FlatField& field, int channel, Setting setting) {
    constexpr int kSide = 512, kBorder = 16;
    const Window window = WindowFor(field, channel, setting);
    setting.params.toneTable = window.Tone();
    cv::Mat bytes;
    cv::extractChannel(Restored(DrawFlat(field, kSide), setting), bytes, channel);
    return window.Undo(bytes(cv::Rect(kBorder, kBorder, kSide - 2 * kBorder, kSide - 2 * kBorder)));
}

double Deviation(const cv::Mat& values) {
    cv::Scalar mean, deviation;
    cv::meanStdDev(values, mean, deviation);
    return deviation[0];
}

cv::Mat BoxMeans(const cv::Mat& values) {
    constexpr int kBox = 16;
    cv::Mat means;
    cv::resize(values, means, values.size() / kBox, 0, 0, cv::INTER_AREA);
    return means;
}

}  // namespace

std::span<const FlatField> AllFlatFields() {
    return kFlatFields;
}

Picture DrawFlat(const FlatField& field, int side) {
    return {cv::Mat(side, side, CV_16UC3, cv::Scalar(field.levels[0], field.levels[1], field.levels[2])), 4095};
}

FlatFigures MeasureFlat(const FlatField& field, const Setting& setting) {
    FlatFigures figures{};
    cv::Mat channels[3];
    for (int channel = 0; channel < 3; ++channel) {
        channels[channel] = RestoredChannel(field, channel, setting);
        figures.deviation[channel] = Deviation(channels[channel]);
        figures.shift[channel] = cv::mean(channels[channel])[0] - field.levels[channel];
    }
    figures.blotch =
        std::hypot(Deviation(BoxMeans(channels[2] - channels[1])), Deviation(BoxMeans(channels[0] - channels[1]))) /
        std::sqrt(2.0);
    return figures;
}

}  // namespace kvx::quality
