#include "KvxFrame/Packing.h"

#include <algorithm>

#include "KvxFrame/Converter.h"
#include "frame/base/Fail.h"
#include "frame/base/Team.h"
#include "frame/packing/GroupLayout.h"
#include "frame/packing/PackedSizes.h"
#include "frame/packing/SampleRange.h"

namespace kvx::frame {
namespace {

constexpr size_t kBandSamples = 1 << 16;  // fewer are not worth a thread

void CheckWords(const PackedImage& image, const void* words, ptrdiff_t wordsStep) {
    const size_t rowBytes = 2 * size_t{image.width};
    const size_t magnitude = wordsStep < 0 ? 0 - static_cast<size_t>(wordsStep) : static_cast<size_t>(wordsStep);
    size_t toLastRow = 0;
    if (image.height > 1 && magnitude < rowBytes)
        Fail(KvxResult_InvalidArgument, "a row of {} words takes {} bytes, more than the step of {}", image.width,
             rowBytes, wordsStep);
    if (__builtin_mul_overflow(magnitude, size_t{image.height} - 1, &toLastRow) || toLastRow > PTRDIFF_MAX - rowBytes)
        Fail(KvxResult_InvalidArgument, "with a step of {} bytes the image of words is larger than the address space",
             wordsStep);
    if (words == nullptr) Fail(KvxResult_NullPointer, "the image of words is a null pointer");
}

void CheckImages(const PackedImage& image, const void* packed, size_t packedSize, const void* words,
                 ptrdiff_t wordsStep, int threads) {
    CheckImageFits(image, packedSize);
    CheckWords(image, words, wordsStep);
    if (packed == nullptr) Fail(KvxResult_NullPointer, "the packed image is a null pointer");
    if (threads < 0 || threads > kMaxThreads)
        Fail(KvxResult_InvalidArgument, "{} threads: give 1 to {}, or 0 for OpenMP's setting", threads, kMaxThreads);
}

void CheckRange(Packing packing, const void* packed, size_t packedSize, size_t first, size_t count,
                const uint16_t* words) {
    CheckPacking(packing);
    if (packed == nullptr) Fail(KvxResult_NullPointer, "the packed sequence is a null pointer");
    if (words == nullptr && count > 0) Fail(KvxResult_NullPointer, "the words are a null pointer");
    const size_t held = std::min<size_t>(packedSize, PTRDIFF_MAX);  // and no byte holds two whole samples
    if (first > held || count > held - first || PackedBytes(packing, first + count) > held)
        Fail(KvxResult_InvalidArgument, "{} samples from sample {} on extend beyond the buffer of {} bytes", count,
             first, packedSize);
}

/** A piece of the sequences that a packed image consists of, and where its words are. */
struct RowRange {
    size_t packedOffset, first;
    ptrdiff_t wordsOffset;
};

/**
 * Calls `convert(row range)` for all rows, spread over threads in bands. Bands start at groups, so that no two threads
 * meet in a byte, also where rows share bytes; within a band rows come in order.
 */
template <class Convert>
void ForEachRow(const PackedImage& image, ptrdiff_t wordsStep, int threads, const Convert& convert) {
    const bool lines = RowsStartGroups(image);
    const size_t lineStep = LineStepOf(image), width = image.width;
    const auto convertRows = [&](int64_t begin, int64_t end) {
        for (int64_t row = begin; row < end; ++row) {
            const auto index = static_cast<size_t>(row);
            convert(lines ? RowRange{index * lineStep, 0, row * wordsStep}
                          : RowRange{0, index * width, row * wordsStep});
        }
    };
    // A band's first row is a multiple of a group's samples, and so is the number of samples in front of it.
    const int64_t rows = image.height, unit = LayoutOf(image.packing).samples, units = (rows + unit - 1) / unit;
    const int64_t bands = std::clamp(static_cast<int64_t>(width * image.height / kBandSamples), int64_t{1}, units);
    const auto bandAt = [=](int64_t band) { return std::min(units * band / bands * unit, rows); };
    ForRows(static_cast<uint32_t>(bands), TeamSize(static_cast<uint64_t>(bands), threads),
            [&](uint32_t band, int) { convertRows(bandAt(band), bandAt(band + 1)); });
}

}  // namespace

void UnpackImage(const PackedImage& image, const void* packed, size_t packedSize, void* words, ptrdiff_t wordsStep,
                 int threads) {
    CheckImages(image, packed, packedSize, words, wordsStep, threads);
    const auto* source = static_cast<const uint8_t*>(packed);
    auto* destination = static_cast<uint8_t*>(words);
    ForEachRow(image, wordsStep, threads, [&](const RowRange& row) {
        UnpackRange(image.packing, source + row.packedOffset, row.first, image.width, destination + row.wordsOffset);
    });
}

void PackImage(const PackedImage& image, const void* words, ptrdiff_t wordsStep, void* packed, size_t packedSize,
               int threads) {
    CheckImages(image, packed, packedSize, words, wordsStep, threads);
    const auto* source = static_cast<const uint8_t*>(words);
    auto* destination = static_cast<uint8_t*>(packed);
    ForEachRow(image, wordsStep, threads, [&](const RowRange& row) {
        PackRange(image.packing, source + row.wordsOffset, destination + row.packedOffset, row.first, image.width,
                  Rest::Cleared);
    });
}

void UnpackSamples(Packing packing, const void* packed, size_t packedSize, size_t first, size_t count,
                   uint16_t* words) {
    CheckRange(packing, packed, packedSize, first, count, words);
    UnpackRange(packing, static_cast<const uint8_t*>(packed), first, count, reinterpret_cast<uint8_t*>(words));
}

void PackSamples(Packing packing, const uint16_t* words, size_t first, size_t count, void* packed, size_t packedSize) {
    CheckRange(packing, packed, packedSize, first, count, words);
    PackRange(packing, reinterpret_cast<const uint8_t*>(words), static_cast<uint8_t*>(packed), first, count,
              Rest::Kept);
}

}  // namespace kvx::frame
