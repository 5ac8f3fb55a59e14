#include "frame/learned/swift/SwiftStrip.h"

#include <algorithm>

#include "frame/learned/FoldedIndex.h"

namespace kvx::frame {
namespace {

constexpr size_t kBefore = 16;  // room in front of a row
constexpr size_t kRow = kBefore + SwiftStrip::kColumns + kRowSlack;
constexpr size_t kSampleRows = 8;  // seven that a pixel depends on, and one more for a quick remainder
constexpr size_t kGradientRows = 3;

/** Bayer sums of four samples of 14 bits fit in 16; gradients are of 12, which spares a copy of the samples. */
int DepthOf(const Format& format) {
    return format.bits <= 12 ? 12 : format.bits <= 14 ? 14 : 16;
}

}  // namespace

SwiftFrame::SwiftFrame(const SwiftFilters& filters, const SourceView& source, const KvxRowSource& sourceRows,
                       uint8_t pictureBits, const KvxPixelSink& pixelSink)
    : mosaic(source),
      mosaicRows(sourceRows),
      bits(pictureBits),
      sink(pixelSink),
      rows(PackFilters(filters, source)),
      shift(filters.shift),
      depth(DepthOf(source.format)),
      isSplit(depth == 16 && source.format.family == Family::Bayer) {}

SwiftStrip::SwiftStrip()
    : m_samples(kSampleRows, kRow),
      m_lower(kSampleRows, kRow),
      m_levels(kSampleRows, kRow),
      m_words(1, kRow),
      m_alongRows(kGradientRows, kRow),
      m_alongColumns(kGradientRows, kRow),
      m_gradientSums(2, kRow),
      m_mix(1, kRow),
      m_pixels(3, kRow) {}

SampleRow SwiftStrip::Samples(const SwiftFrame& frame, int64_t row) {
    return {m_samples.Row(row) + kBefore, frame.isSplit ? m_lower.Row(row) + kBefore : nullptr,
            frame.depth > 12 ? m_levels.Row(row) + kBefore : nullptr};
}

GradientRow SwiftStrip::Gradients(int64_t row) {
    return {m_alongRows.Row(row) + kBefore, m_alongColumns.Row(row) + kBefore};
}

GradientRow SwiftStrip::GradientSums() {
    return {m_gradientSums.Row(0) + kBefore, m_gradientSums.Row(1) + kBefore};
}

/** Samples on both sides of the frame repeat others nearby, which are in the same strip. */
void SwiftStrip::ReadRow(const SwiftFrame& frame, int64_t row, int64_t left, size_t columns) {
    const SourceView& mosaic = frame.mosaic;
    const auto side = static_cast<int64_t>(TileSide(mosaic.format));
    const int64_t width = mosaic.width;
    // A tile more than the filters reach, so that what the border repeats is there.
    const int64_t first = left - kSwiftReach - side, end = left + static_cast<int64_t>(columns) + kSwiftReach;
    const int64_t insideFirst = std::max<int64_t>(first, 0), insideEnd = std::min(end, width);
    uint16_t* const words = m_words.Row(0);
    frame.mosaicRows.read(frame.mosaicRows.context, static_cast<uint32_t>(FoldedIndex(row, mosaic.height, side)),
                          static_cast<uint32_t>(insideFirst), static_cast<uint32_t>(insideEnd - insideFirst), words);

    const SampleRow samples = Samples(frame, row);
    const auto moved = [&](int64_t column) {
        const int64_t by = column - left;
        return SampleRow{samples.samples + by, samples.lower ? samples.lower + by : nullptr,
                         samples.levels ? samples.levels + by : nullptr};
    };
    SetDepth(words, static_cast<size_t>(insideEnd - insideFirst), mosaic.format.bits, frame.depth, moved(insideFirst));
    const auto repeat = [&](int64_t column) {
        const SampleRow to = moved(column), from = moved(FoldedIndex(column, width, side));
        *to.samples = *from.samples;
        if (to.lower) *to.lower = *from.lower;
        if (to.levels) *to.levels = *from.levels;
    };
    for (int64_t column = left - kSwiftReach; column < 0; ++column) repeat(column);
    for (int64_t column = width; column < end; ++column) repeat(column);
}

void SwiftStrip::ComputeGradients(const SwiftFrame& frame, int64_t row, size_t columns) {
    const int16_t* levels[5];
    for (int64_t i = 0; i < 5; ++i) {
        const SampleRow samples = Samples(frame, row + i - 2);
        levels[i] = (samples.levels ? samples.levels : samples.samples) - 1;
    }
    // From one column to the left to one to the right.
    const auto moved = [](const GradientRow& at) { return GradientRow{at.alongRows - 1, at.alongColumns - 1}; };
    const GradientRow rows[3] = {moved(Gradients(row - 2)), moved(Gradients(row - 1)), moved(Gradients(row))};
    const GradientRow sums = moved(GradientSums());
    if (frame.mosaic.format.family == Family::Bayer)
        BayerGradients(levels, columns + 2, rows, sums);
    else
        TrueSenseGradients(levels, 1 - frame.rows[row & 3].firstPan, columns + 2, rows, sums);
}

void SwiftStrip::ComputePixels(const SwiftFrame& frame, int64_t row, int64_t left, size_t columns) {
    uint16_t* const mix = m_mix.Row(0) + kBefore;
    MixRow(GradientSums(), columns, mix);

    const PackedRow& filters = frame.rows[row & 3];
    const Format& in = frame.mosaic.format;
    const int up = 16 - frame.depth;
    const PixelInput input{filters, mix, frame.shift + 2 - up, up};
    uint16_t *const red = m_pixels.Row(0), *const green = m_pixels.Row(1), *const blue = m_pixels.Row(2);
    const PixelRow pixels{.own = filters.ownIsRed ? red : blue,
                          .green = green,
                          .other = filters.ownIsRed ? blue : red,
                          .count = columns,
                          .sampleBits = std::max<int>(in.bits, frame.bits),
                          .bits = frame.bits};

    const int16_t *samples[7], *lower[7];
    for (int64_t i = 0; i < 7; ++i) {
        const SampleRow at = Samples(frame, row + i - 3);
        samples[i] = at.samples;
        lower[i] = at.lower;
    }
    if (in.family == Family::TrueSense)
        TrueSensePixels(input, samples, pixels);
    else
        BayerPixels(input, samples, frame.isSplit ? lower : nullptr, pixels);
    frame.sink.write(frame.sink.context, static_cast<uint32_t>(row), static_cast<uint32_t>(left),
                     static_cast<uint32_t>(columns), red, green, blue);
}

void SwiftStrip::Run(const SwiftFrame& frame, int64_t top, int64_t bottom, int64_t left, size_t columns) {
    for (int64_t row = top - kSwiftReach; row < bottom + kSwiftReach; ++row) {
        ReadRow(frame, row, left, columns);
        if (row - 2 >= top - 1) ComputeGradients(frame, row - 2, columns);
        if (row - kSwiftReach >= top) ComputePixels(frame, row - kSwiftReach, left, columns);
    }
}

}  // namespace kvx::frame
