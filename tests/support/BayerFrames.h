/** Bayer frames for tests, and what the image-processing library makes of them. */
#pragma once

#include <opencv2/imgproc.hpp>
#include <random>

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

inline const BayerDepth kBayerDepths[] = {
    {8,
     {KvxFormat_BayerGR8, KvxFormat_BayerRG8, KvxFormat_BayerBG8, KvxFormat_BayerGB8},
     KvxFormat_RGB8,
     KvxFormat_BGR8},
    {10,
     {KvxFormat_BayerGR10, KvxFormat_BayerRG10, KvxFormat_BayerBG10, KvxFormat_BayerGB10},
     KvxFormat_RGB10,
     KvxFormat_BGR10},
    {12,
     {KvxFormat_BayerGR12, KvxFormat_BayerRG12, KvxFormat_BayerBG12, KvxFormat_BayerGB12},
     KvxFormat_RGB12,
     KvxFormat_BGR12},
    {14,
     {KvxFormat_BayerGR14, KvxFormat_BayerRG14, KvxFormat_BayerBG14, KvxFormat_BayerGB14},
     KvxFormat_RGB14,
     KvxFormat_BGR14},
    {16,
     {KvxFormat_BayerGR16, KvxFormat_BayerRG16, KvxFormat_BayerBG16, KvxFormat_BayerGB16},
     KvxFormat_RGB16,
     KvxFormat_BGR16},
};

/** The library's conversion codes, written out as the format names demand: [pattern][blue-first]. */
constexpr int kBilinearCodes[4][2] = {{49, 47}, {48, 46}, {46, 48}, {47, 49}};
constexpr int kEdgeAwareCodes[4][2] = {{138, 136}, {137, 135}, {135, 137}, {136, 138}};

inline int CodeOf(int pattern, int algorithm, bool blueFirst) {
    return (algorithm == 2 ? kEdgeAwareCodes : kBilinearCodes)[pattern][blueFirst];
}

enum class Fill { Noise, Extremes };

/** Samples of a frame, bytes or 16-bit words by depth: noise, or zeros and maxima side by side. */
inline std::vector<uint8_t> MakeSamples(Fill fill, uint32_t width, uint32_t height, int depth, unsigned seed) {
    std::mt19937 random(seed);
    const unsigned maximum = (1u << depth) - 1;
    std::vector<uint8_t> bytes;
    for (size_t i = 0; i < size_t{width} * height; ++i) {
        const auto drawn = static_cast<unsigned>(random());
        const unsigned sample = fill == Fill::Noise ? drawn & maximum : drawn & 1 ? maximum : 0;
        bytes.push_back(static_cast<uint8_t>(sample));
        if (depth > 8) bytes.push_back(static_cast<uint8_t>(sample >> 8));
    }
    return bytes;
}

/** A source image with guards that holds these samples. */
inline GuardedImage MakeSource(uint32_t pixelType, int depth, uint32_t width, uint32_t height, size_t padding,
                               const std::vector<uint8_t>& samples, size_t offset = 0) {
    const size_t rowBytes = width * (depth == 8 ? 1 : 2);
    GuardedImage image(pixelType, width, height, rowBytes, rowBytes + padding, offset);
    image.Record().pixelDepth = static_cast<uint32_t>(depth);
    image.SetPixels(samples);
    return image;
}

/** The library's own conversion of a whole, unpadded frame. */
inline cv::Mat LibraryConversion(std::vector<uint8_t> samples, int depth, uint32_t width, uint32_t height, int code) {
    const cv::Mat source(static_cast<int>(height), static_cast<int>(width), depth == 8 ? CV_8UC1 : CV_16UC1,
                         samples.data());
    cv::Mat result;
    cv::cvtColor(source, result, code);
    return result;
}

inline std::vector<uint8_t> BytesOf(const cv::Mat& continuous) {
    return {continuous.data, continuous.data + continuous.total() * continuous.elemSize()};
}

}  // namespace kvx::test
