#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "tools/files/RawFrame.h"

namespace kvx::tool {

/** What is known of a frame whose format is to be guessed. */
struct KnownFacts {
    std::optional<uint64_t> width;
    std::optional<uint64_t> height;
    std::optional<uint64_t> bits;
};

/** One way to read a file: how the samples lie in it, and the size of the frame. Nothing of colours yet. */
struct Reading {
    frame::Format layout;  ///< of mono; says bits and layout
    cv::Mat samples;       ///< CV_8UC1 or CV_16UC1
    double continuity;     ///< see Continuity()
};

/**
 * How much more alike near samples (two and four sites apart, in both directions) are than far ones: about 1 for a
 * smooth picture, 0 for noise and for rows of a wrong width.
 */
double Continuity(const cv::Mat& samples);

/** The fewest bits, of 8 for bytes and 10 to 16 for words, that hold the largest sample. */
uint8_t BitsUsed(const cv::Mat& samples);

/**
 * All ways to read the samples of a file that fill it without a rest, the most continuous first, at most `count`.
 *
 * Layouts with bits that no sample uses count only where these are zero; of those in which a sample takes the same room
 * only those with the smallest depth count: a byte order that leaves high bits unset is no accident. A size that is not
 * known has a width that is a multiple of 4 and between one and 2.4 times the height.
 */
std::vector<Reading> ReadingsOf(const Bytes& content, const KnownFacts& known, size_t count);

}  // namespace kvx::tool
