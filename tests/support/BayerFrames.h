/** Bayer frames for tests, and OpenCV's conversions of them. */
#pragma once

#include <opencv2/imgproc.hpp>
#include <random>
#include <string>

#include "KvxDemosaicing/KvxBayer.h"
#include "KvxDemosaicing/KvxBayerFlat.h"
#include "KvxDemosaicing/KvxPixelFormat.h"
#include "support/GuardedImage.h"

namespace kvx::test {

/** The formats of one sample depth, patterns in the order of the flat functions' argument: GR, RG, BG, GB. */
struct BayerDepth {
    int depth;
    uint32_t patterns[4];
    uint32_t rgb, bgr;
    size_t SampleSize() const {
        return depth == 8 ? 1 : 2;
    }
};

inline BayerDepth BayerDepthOf(int depth) {
    const auto code = [&](const char* name) {
        return KvxPixelFormat_ByName((name + std::to_string(depth)).c_str())->pixelType;
    };
    return {depth, {code("BayerGR"), code("BayerRG"), code("BayerBG"), code("BayerGB")}, code("RGB"), code("BGR")};
}
inline const BayerDepth kBayerDepths[] = {BayerDepthOf(8), BayerDepthOf(10), BayerDepthOf(12), BayerDepthOf(14),
                                          BayerDepthOf(16)};
constexpr const char* kBayerTiles[4] = {"GRBG", "RGGB", "BGGR", "GBRG"};  // in the order of BayerDepth::patterns

inline char BayerFilterAt(int pattern, uint32_t row, uint32_t column) {
    return kBayerTiles[pattern][row % 2 * 2 + column % 2];
}

/** OpenCV's conversion codes: [pattern][blue-first]. */
constexpr int kBilinearCodes[4][2] = {{49, 47}, {48, 46}, {46, 48}, {47, 49}};
constexpr int kEdgeAwareCodes[4][2] = {{138, 136}, {137, 135}, {135, 137}, {136, 138}};

inline int CodeOf(int pattern, int algorithm, bool blueFirst) {
    return (algorithm == 2 ? kEdgeAwareCodes : kBilinearCodes)[pattern][blueFirst];
}

/** A frame's samples `sampleAt(row, column)`, as bytes or 16-bit words. */
template <class SampleAt>
std::vector<uint8_t> SamplesBy(uint32_t width, uint32_t height, int depth, const SampleAt& sampleAt) {
    std::vector<uint8_t> bytes;
    for (uint32_t row = 0; row < height; ++row)
        for (uint32_t column = 0; column < width; ++column) {
            const auto sample = static_cast<unsigned>(sampleAt(row, column));
            bytes.push_back(static_cast<uint8_t>(sample));
            if (depth > 8) bytes.push_back(static_cast<uint8_t>(sample >> 8));
        }
    return bytes;
}

enum class Fill { Noise, Extremes };

/** Noise, or a random mix of zeros and maxima. */
inline std::vector<uint8_t> MakeSamples(Fill fill, uint32_t width, uint32_t height, int depth, unsigned seed) {
    std::mt19937 random(seed);
    const unsigned maximum = (1u << depth) - 1;
    return SamplesBy(width, height, depth, [&](uint32_t, uint32_t) {
        const auto drawn = static_cast<unsigned>(random());
        return fill == Fill::Noise ? drawn & maximum : drawn & 1 ? maximum : 0;
    });
}

/** The values of samples or pixels of this depth. */
inline std::vector<uint16_t> WordsOf(const std::vector<uint8_t>& bytes, int depth) {
    if (depth == 8) return {bytes.begin(), bytes.end()};
    std::vector<uint16_t> words(bytes.size() / 2);
    std::memcpy(words.data(), bytes.data(), bytes.size());
    return words;
}

/** A source image with guards and these samples. */
inline GuardedImage MakeSource(uint32_t pixelType, int depth, uint32_t width, uint32_t height, size_t padding,
                               const std::vector<uint8_t>& samples, size_t offset = 0) {
    const size_t rowBytes = width * (depth == 8 ? 1 : 2);
    GuardedImage image(pixelType, width, height, rowBytes, rowBytes + padding, offset);
    image.Record().pixelDepth = static_cast<uint32_t>(depth);
    image.SetPixels(samples);
    return image;
}

/** OpenCV's conversion of a whole, unpadded frame. */
inline cv::Mat OpenCvConversion(std::vector<uint8_t> samples, int depth, uint32_t width, uint32_t height, int code) {
    const cv::Mat source(static_cast<int>(height), static_cast<int>(width), depth == 8 ? CV_8UC1 : CV_16UC1,
                         samples.data());
    cv::Mat result;
    cv::cvtColor(source, result, code);
    return result;
}

inline std::vector<uint8_t> BytesOf(const cv::Mat& continuous) {
    return {continuous.data, continuous.data + continuous.total() * continuous.elemSize()};
}

/** The high bytes of a picture of words of `depth` bits. */
inline std::vector<uint8_t> Shifted(const cv::Mat& words, int depth) {
    std::vector<uint8_t> bytes;
    for (const uint16_t word : WordsOf(BytesOf(words), 16)) bytes.push_back(static_cast<uint8_t>(word >> (depth - 8)));
    return bytes;
}

}  // namespace kvx::test
