#include "demosaicers/frame/SourceRow.h"

#include <algorithm>
#include <cstring>

#include "demosaicers/frame/MarginSample.h"
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/frame/SourceRow.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

using Words = hn::ScalableTag<uint16_t>;

auto LoadWords(Words d, const uint8_t* bytes, uint8_t) {
    return hn::PromoteTo(d, hn::LoadU(hn::Rebind<uint8_t, Words>(), bytes));
}
auto LoadWords(Words d, const uint8_t* bytes, uint16_t) {
    return hn::LoadU(d, reinterpret_cast<const uint16_t*>(bytes));
}

/** @param next the samples to read after these: they are prefetched */
template <class T>
uint16_t Read(const TrueSenseSource& source, const uint8_t* samples, const uint8_t* next, size_t count, int16_t* line) {
    const Words d;
    const hn::RebindToSigned<Words> signedWords;
    const size_t lanes = hn::Lanes(d);
    auto largest = hn::Zero(d);
    size_t i = 0;
    for (; i + lanes <= count; i += lanes) {
        auto v = LoadWords(d, samples + (source.backwards ? count - lanes - i : i) * sizeof(T), T{});
        __builtin_prefetch(next + i * sizeof(T));
        if (source.backwards) v = hn::Reverse(d, v);
        v = hn::ShiftRightSame(hn::ShiftLeftSame(v, source.leftShift), source.rightShift);
        largest = hn::Max(largest, v);
        hn::StoreU(hn::BitCast(signedWords, v), signedWords, line + i);
    }
    uint16_t result = hn::GetLane(hn::MaxOfLanes(d, largest));
    for (; i < count; ++i) {
        T sample;
        std::memcpy(&sample, samples + (source.backwards ? count - 1 - i : i) * sizeof(T), sizeof(T));
        const auto value = static_cast<uint16_t>(sample << source.leftShift >> source.rightShift);
        result = std::max(result, value);
        line[i] = static_cast<int16_t>(value);
    }
    return result;
}

constexpr auto& ReadBytes = Read<uint8_t>;
constexpr auto& ReadWords = Read<uint16_t>;

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {
namespace {

HWY_EXPORT(ReadBytes);
HWY_EXPORT(ReadWords);

/** Reads `count` samples, shifted to 12 bits. @return the largest, as an unsigned value */
uint16_t ReadSamples(const TrueSenseSource& source, const uint8_t* samples, const uint8_t* next, int count,
                     int16_t* line) {
    const auto length = static_cast<size_t>(count);
    return source.sampleSize == 1 ? HWY_DYNAMIC_DISPATCH(ReadBytes)(source, samples, next, length, line)
                                  : HWY_DYNAMIC_DISPATCH(ReadWords)(source, samples, next, length, line);
}

/** As ReadGiven(). */
uint16_t ReadExchanged(const TrueSenseFrame& frame, int row, int column, int count, int16_t* line) {
    constexpr int length = 1024;
    alignas(64) uint16_t samples[length];
    const Area& given = frame.area.given;
    uint16_t largest = 0;
    for (int done = 0; done < count; done += length) {
        const int part = std::min(length, count - done), first = column + done;
        frame.exchange->Read(static_cast<uint32_t>(frame.source.upwards ? given.height - 1 - row : row),
                             static_cast<uint32_t>(frame.source.backwards ? given.width - first - part : first),
                             static_cast<uint32_t>(part), samples);
        const auto* bytes = reinterpret_cast<const uint8_t*>(samples);
        largest = std::max(largest, ReadSamples(frame.source, bytes, bytes, part, line + done));
    }
    return largest;
}

/** Reads samples of the given area, whose row and column count from its own. @return the largest */
uint16_t ReadGiven(const TrueSenseFrame& frame, int row, int column, int count, int16_t* line) {
    if (frame.exchange) return ReadExchanged(frame, row, column, count, line);
    const TrueSenseSource& source = frame.source;
    const Area& given = frame.area.given;
    const size_t offset = (source.backwards ? given.width - column - count : column) * source.sampleSize;
    const uint8_t* next = source.Row(std::min(row + 1, given.height - 1));
    return ReadSamples(source, source.Row(row) + offset, next + offset, count, line);
}

/** With fewer given rows than a tile has, the columns of a row may take their samples from different rows. */
uint16_t ReadColumnByColumn(const TrueSenseFrame& frame, int row, int16_t* line) {
    const Area& given = frame.area.given;
    uint16_t largest = 0;
    for (int i = 0; i < given.width; ++i) {
        const auto kindAt = [column = given.column + i](int place) { return KindAt(place, column); };
        const int from = MarginSampleFor(row, given.row, given.height, kindAt) - given.row;
        largest = std::max(largest, ReadGiven(frame, from, i, 1, line + i));
    }
    return largest;
}

}  // namespace

bool ReadSourceRow(const TrueSenseFrame& frame, int row, int16_t* line) {
    const Area& given = frame.area.given;
    int16_t* samples = line + given.column;
    uint16_t largest;
    if (given.height >= kTileSize) {
        const auto anyKind = [](int) { return 'W'; };
        const int from = MarginSampleFor(row, given.row, given.height, anyKind) - given.row;
        largest = ReadGiven(frame, from, 0, given.width, samples);
    } else {
        largest = ReadColumnByColumn(frame, row, samples);
    }
    const auto fill = [&](int begin, int end) {
        for (int column = begin; column < end; ++column)
            line[column] = line[MarginSampleFor(column, given.column, given.width,
                                                [row](int place) { return KindAt(row, place); })];
    };
    fill(0, given.column);
    fill(given.column + given.width, frame.area.width);
    return largest < KVX_TONE_TABLE_SIZE;
}

}  // namespace kvx
#endif
