#include "frame/convert/PictureRow.h"

#include <algorithm>
#include <cstring>
#include <utility>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/convert/PictureRow.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "frame/samples/SampleAt.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

const hn::ScalableTag<uint16_t> d16;
const hn::ScalableTag<int32_t> d32;
const hn::ScalableTag<float> dFloat;
const hn::Rebind<uint16_t, decltype(d32)> dHalf16;

/** Pixels per chunk: the three planes stay in the first-level cache. A multiple of the lanes of any vector. */
constexpr size_t kChunk = 512;
using Plane = uint16_t*;

/** Elements for vectors: none of words at odd addresses, which are processed one by one. */
template <class T>
size_t VectorCount(const void* samples, size_t count) {
    return reinterpret_cast<uintptr_t>(samples) % sizeof(T) == 0 ? count : 0;
}

auto Widened(hn::Vec<decltype(d16)> v) {
    return v;
}
auto Widened(hn::Vec<hn::Rebind<uint8_t, decltype(d16)>> v) {
    return hn::PromoteTo(d16, v);
}

template <class T>
auto Narrowed(hn::Vec<decltype(d16)> v) {
    if constexpr (sizeof(T) == 2)
        return v;
    else
        return hn::DemoteTo(hn::Rebind<uint8_t, decltype(d16)>(), hn::BitCast(hn::RebindToSigned<decltype(d16)>(), v));
}

template <class T>
void LoadColours(const uint8_t* in, size_t count, const Plane planes[3]) {
    const hn::Rebind<T, decltype(d16)> d;
    size_t i = 0;
    for (const size_t end = VectorCount<T>(in, count); i + hn::Lanes(d) <= end; i += hn::Lanes(d)) {
        hn::Vec<decltype(d)> first, second, third;
        hn::LoadInterleaved3(d, reinterpret_cast<const T*>(in) + 3 * i, first, second, third);
        hn::Store(Widened(first), d16, planes[0] + i);
        hn::Store(Widened(second), d16, planes[1] + i);
        hn::Store(Widened(third), d16, planes[2] + i);
    }
    for (; i < count; ++i)
        for (size_t channel = 0; channel < 3; ++channel) planes[channel][i] = SampleAt<T>(in, 3 * i + channel);
}

template <class T>
void LoadGrey(const uint8_t* in, size_t count, const Plane planes[3]) {
    for (size_t i = 0; i < count; ++i) planes[0][i] = planes[1][i] = planes[2][i] = SampleAt<T>(in, i);
}

void ApplyMatrix(const PixelMatrix& matrix, size_t count, Plane red, Plane green, Plane blue) {
    const auto load = [](const uint16_t* plane) {
        return hn::ConvertTo(dFloat, hn::PromoteTo(d32, hn::Load(dHalf16, plane)));
    };
    const auto zero = hn::Zero(dFloat), white = hn::Set(dFloat, 65535.0F), half = hn::Set(dFloat, 0.5F);
    for (size_t i = 0; i < count; i += hn::Lanes(d32)) {  // the planes are whole vectors
        const auto r = load(red + i), g = load(green + i), b = load(blue + i);
        const auto value = [&](const float* row) {
            const auto sum = hn::Add(hn::Add(hn::Mul(hn::Set(dFloat, row[0]), r), hn::Mul(hn::Set(dFloat, row[1]), g)),
                                     hn::Mul(hn::Set(dFloat, row[2]), b));
            const auto limited = hn::Min(hn::Max(sum, zero), white);
            return hn::DemoteTo(dHalf16, hn::ConvertTo(d32, hn::Add(limited, half)));
        };
        hn::Store(value(matrix.data()), dHalf16, red + i);
        hn::Store(value(matrix.data() + 3), dHalf16, green + i);
        hn::Store(value(matrix.data() + 6), dHalf16, blue + i);
    }
}

template <class T>
void StoreColours(const Plane planes[3], size_t count, uint16_t white, bool withFourth, uint8_t* out) {
    const hn::Rebind<T, decltype(d16)> d;
    const size_t channels = withFourth ? 4 : 3;
    const auto fourth = hn::Set(d, static_cast<T>(white));
    size_t i = 0;
    for (const size_t end = VectorCount<T>(out, count); i + hn::Lanes(d) <= end; i += hn::Lanes(d)) {
        const auto first = Narrowed<T>(hn::Load(d16, planes[0] + i));
        const auto second = Narrowed<T>(hn::Load(d16, planes[1] + i));
        const auto third = Narrowed<T>(hn::Load(d16, planes[2] + i));
        T* to = reinterpret_cast<T*>(out) + channels * i;
        if (withFourth)
            hn::StoreInterleaved4(first, second, third, fourth, d, to);
        else
            hn::StoreInterleaved3(first, second, third, d, to);
    }
    for (; i < count; ++i) {
        for (size_t channel = 0; channel < 3; ++channel) PutSample<T>(out, channels * i + channel, planes[channel][i]);
        if (withFourth) PutSample<T>(out, channels * i + 3, white);
    }
}

void Chunk(const PictureStep& step, const uint8_t* in, uint8_t* out, size_t count) {
    HWY_ALIGN uint16_t memory[3][kChunk];
    const Plane planes[3] = {memory[0], memory[1], memory[2]};
    if (step.channels == 1)
        step.sampleBytes == 1 ? LoadGrey<uint8_t>(in, count, planes) : LoadGrey<uint16_t>(in, count, planes);
    else
        step.sampleBytes == 1 ? LoadColours<uint8_t>(in, count, planes) : LoadColours<uint16_t>(in, count, planes);

    const Order order = step.destination.order;
    const bool isBlueFirst = order == Order::Bgr || order == Order::Bgra || order == Order::Bgrx;
    if (step.matrix)
        ApplyMatrix(*step.matrix, count, planes[isBlueFirst ? 2 : 0], planes[1], planes[isBlueFirst ? 0 : 2]);
    if (step.table)
        for (const Plane plane : planes)
            for (size_t i = 0; i < count; ++i) plane[i] = step.table[plane[i]];

    const auto white = static_cast<uint16_t>(White(step.destination));
    const bool withFourth = order != Order::Rgb && order != Order::Bgr;
    if (step.destination.bits == 8)
        StoreColours<uint8_t>(planes, count, white, withFourth, out);
    else
        StoreColours<uint16_t>(planes, count, white, withFourth, out);
}

/** Adds the fourth sample to pixels of bytes, four pixels at a time, from right to left as below. */
void AddFourth(const uint8_t* in, uint8_t* out, size_t width) {
    alignas(16) constexpr uint8_t kPlaces[16] = {0, 1, 2, 128, 3, 4, 5, 128, 6, 7, 8, 128, 9, 10, 11, 128};
    const hn::FixedTag<uint8_t, 16> d;
    const auto places = hn::Load(d, kPlaces);
    const auto fourths = hn::BitCast(d, hn::Set(hn::FixedTag<uint32_t, 4>(), 0xFF000000u));
    size_t left = width;
    const auto addOne = [&] {
        --left;
        const uint8_t pixel[4] = {in[3 * left], in[3 * left + 1], in[3 * left + 2], 255};
        std::memcpy(out + 4 * left, pixel, sizeof pixel);
    };
    // A vector reads its four pixels and four more bytes: two more pixels must follow.
    while (left > 0 && (left % 4 != 0 || left + 2 > width)) addOne();
    for (; left > 0; left -= 4) {
        const auto pixels = hn::LoadU(d, in + 3 * (left - 4));
        hn::StoreU(hn::Or(hn::TableLookupBytesOr0(pixels, places), fourths), d, out + 4 * (left - 4));
    }
}

/** From right to left: if pixels grow in place, none is overwritten before it is read. */
void Row(const PictureStep& step, const uint8_t* in, uint8_t* out, size_t width) {
    if (!step.matrix && !step.table && step.channels == 3 && step.sampleBytes == 1 && step.destination.bits == 8 &&
        SamplesPerPixel(step.destination) == 4) {
        AddFourth(in, out, width);
        return;
    }
    const size_t inBytes = size_t{step.channels} * step.sampleBytes;
    const size_t outBytes = RowBytes(step.destination, 1);
    for (size_t left = (width - 1) / kChunk * kChunk;; left -= kChunk) {
        Chunk(step, in + left * inBytes, out + left * outBytes, std::min(kChunk, width - left));
        if (left == 0) return;
    }
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {

HWY_EXPORT(Row);

void MakePictureRow(const PictureStep& step, const uint8_t* in, uint8_t* out, size_t width) {
    HWY_DYNAMIC_DISPATCH(Row)(step, in, out, width);
}

}  // namespace kvx::frame
#endif
