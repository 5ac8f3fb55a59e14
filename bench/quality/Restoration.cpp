#include "quality/Restoration.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <stdexcept>
#include <vector>

#include "KvxDemosaicing/KvxDemosaicing.h"
#include "KvxFrame/KvxFrame.h"
#include "KvxTrueSense/TrueSenseParams.h"
#include "support/Records.h"

namespace kvx::quality {
namespace {

using bench::RecordOf;
using Family = Algorithm::Family;

constexpr Algorithm kAlgorithms[] = {
    {"bilinear", Family::Bayer, KvxBayerAlgorithm_Bilinear},
    {"ipp", Family::Bayer, KvxBayerAlgorithm_IPP},
    {"edge-aware", Family::Bayer, KvxBayerAlgorithm_EdgeAware},
    {"fine", Family::Bayer, -1, "fine"},
    {"swift", Family::Bayer, -1, "swift"},
    {"fast", Family::TrueSense, KvxTrueSenseAlgorithm_Fast},
    {"simple", Family::TrueSense, KvxTrueSenseAlgorithm_Simple},
    {"bayer-like", Family::TrueSense, KvxTrueSenseAlgorithm_BayerLike},
    {"kodak-like", Family::TrueSense, KvxTrueSenseAlgorithm_KodakLike},
    {"kodak", Family::TrueSense, KvxTrueSenseAlgorithm_Kodak},
    {"truesense-fine", Family::TrueSense, -1, "fine"},
    {"truesense-swift", Family::TrueSense, -1, "swift"},
};

using ToneTable = std::array<uint16_t, KVX_TONE_TABLE_SIZE>;

/** 12-bit values whose upper 8 bits are the display value of light from 0 to 1. */
template <class Curve>
ToneTable ToneTableOf(const Curve& curve) {
    ToneTable table;
    for (size_t value = 0; value < table.size(); ++value) {
        const double light = static_cast<double>(value) / static_cast<double>(table.size() - 1);
        table[value] = static_cast<uint16_t>(static_cast<unsigned>(curve(light) * 255 + 0.5) << 4);
    }
    return table;
}

template <class Number>
bool Parse(const std::string& text, Number& number) {
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end;
}

template <class View>
View ViewOf(const cv::Mat& image, const frame::Format& format) {
    return {.data = image.data,
            .width = static_cast<uint32_t>(image.cols),
            .height = static_cast<uint32_t>(image.rows),
            .stride = static_cast<ptrdiff_t>(image.step),
            .capacity = image.total() * image.elemSize(),
            .format = format};
}

/** The frame that a sensor of this unpacked format would record of the image. */
cv::Mat FrameOf(const Picture& picture, const frame::Format& format, frame::Sensor sensor) {
    const frame::Format colour{.family = frame::Family::Colour,
                               .bits = static_cast<uint8_t>(8 * picture.pixels.elemSize1()),
                               .order = frame::Order::Bgr};
    cv::Mat samples(picture.pixels.size(), format.bits > 8 ? CV_16UC1 : CV_8UC1);
    sensor.pictureWhite = picture.white;
    frame::MakeMosaic(ViewOf<frame::SourceView>(picture.pixels, colour),
                      ViewOf<frame::DestinationView>(samples, format), sensor);
    return samples;
}

/** A finish with this curve; only the upper 8 of its 12 bits count. */
frame::Finish FinishOf(const uint16_t* tone) {
    frame::Finish finish;
    finish.tone = frame::ToneCurve::Table;
    for (size_t i = 0; i < KVX_TONE_TABLE_SIZE; ++i)
        finish.table.push_back(static_cast<uint16_t>((tone[i] >> 4) * 257));
    return finish;
}

}  // namespace

std::span<const Algorithm> AllAlgorithms() {
    static const std::vector<Algorithm> all = [] {
        std::vector<Algorithm> algorithms(std::begin(kAlgorithms), std::end(kAlgorithms));
        for (const peers::Peer& peer : peers::AllPeers())
            algorithms.push_back({peer.name, Family::Bayer, -1, nullptr, &peer});
        return algorithms;
    }();
    return all;
}

const Algorithm& AlgorithmByName(const std::string& name) {
    for (const Algorithm& algorithm : AllAlgorithms())
        if (name == algorithm.name) return algorithm;
    throw std::invalid_argument("unknown algorithm: " + name);
}

Setting Setting::At(Gain gain) const {
    Setting other = *this;
    other.analogGain = gain;
    return other;
}

const uint16_t* LinearTone() {
    static const ToneTable table = ToneTableOf([](double light) { return light; });
    return table.data();
}

const uint16_t* SrgbTone() {
    static const ToneTable table = ToneTableOf(
        [](double light) { return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055; });
    return table.data();
}

tagTrueSenseParam PlainParams() {
    tagTrueSenseParam params;
    TrueSense_DefaultValues(&params);
    params.RG = params.RB = params.GR = params.GB = params.BR = params.BG = 0;
    params.RR = params.GG = params.BB = 1;
    params.toneTable = LinearTone();
    SetSharpness(params, Sharpness::Plain);
    return params;
}

void SetSharpness(tagTrueSenseParam& params, Sharpness sharpness) {
    tagTrueSenseParam defaults;
    TrueSense_DefaultValues(&defaults);
    const bool isFull = sharpness == Sharpness::Full;
    const double detail = sharpness == Sharpness::Off ? 0 : 1;
    params.sharpenParam = isFull ? defaults.sharpenParam : 0;
    params.maxSharpen = isFull ? defaults.maxSharpen : 0;
    params.highLumaNoise = isFull ? defaults.highLumaNoise : detail;
    params.lowLumaNoise = isFull ? defaults.lowLumaNoise : detail;
}

void SwitchFilterOff(tagTrueSenseParam& params) {
    params.panRadius0 = params.panRadius1 = params.panRadius2 = 0;
    params.colorRadius0 = params.colorRadius1 = params.colorRadius2 = 0;
}

void SetParam(tagTrueSenseParam& params, const std::string& assignment) {
    const size_t equals = std::min(assignment.find('='), assignment.size());
    const std::string name = assignment.substr(0, equals),
                      value = assignment.substr(std::min(equals + 1, assignment.size()));
    for (const TrueSenseParamRow& row : s_trueSenseParams)
        if (name == row.name && (row.integer ? Parse(value, params.*row.integer) : Parse(value, params.*row.real)))
            return;
    throw std::invalid_argument(assignment + ": give the name of a TrueSense parameter, = and a number");
}

cv::Mat Restored(const Picture& picture, const Setting& setting) {
    const Algorithm& algorithm = setting.algorithm;
    const bool isBayer = algorithm.family == Family::Bayer;
    tagTrueSenseParam params = setting.params;
    frame::Sensor sensor;
    sensor.isLinear = setting.isRendered;
    if (setting.isRendered) params.toneTable = SrgbTone();
    if (setting.analogGain) {
        params.analogGain = *setting.analogGain;
        sensor.noise = frame::NoiseAt(params, *setting.analogGain);
        sensor.noiseSeed = setting.seed;
    }
    const char* format = isBayer ? "BayerRG8" : "TrueSense_BGGR_WBBW_0_12";
    const cv::Mat samples = FrameOf(picture, frame::FormatByName(format), sensor);
    if (algorithm.peer) {
        const auto conversion = algorithm.peer->open(samples, 8);
        conversion->Prepare();
        conversion->Run();
        return conversion->Picture();
    }
    cv::Mat result(samples.size(), CV_8UC3);
    if (algorithm.frameAlgorithm) {
        frame::Options options;
        options.algorithm = algorithm.frameAlgorithm;
        options.noise = sensor.noise;
        options.finish = FinishOf(params.toneTable);
        frame::Convert(ViewOf<frame::SourceView>(samples, frame::FormatByName(format)),
                       ViewOf<frame::DestinationView>(result, frame::FormatByName("BGR8")), options);
        return result;
    }
    const _KvxImage src = RecordOf(samples, format);
    _KvxImage dst = RecordOf(result, "BGR8");
    const uint32_t refusal = isBayer ? BayerToColor(&src, &dst, algorithm.number)
                                     : TrueSenseToColor(&src, &dst, &params, algorithm.number, true);
    if (refusal) throw std::runtime_error(std::string("algorithm ") + algorithm.name + ": " + KvxResult_Text(refusal));
    return result;
}

}  // namespace kvx::quality
