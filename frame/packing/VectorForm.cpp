#include "frame/packing/VectorForm.h"

#include <bit>

#include "frame/packing/VectorTables.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/packing/VectorForm.cpp"
#include <hwy/foreach_target.h>  // compiles this file once per instruction set
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

// Sixteen bytes, whatever the processor has: wider vectors cannot look up across them, and memory is slower than this.
const hn::FixedTag<uint8_t, 16> kBytes;
const hn::FixedTag<uint16_t, kVectorSamples> kWords;

size_t Unpack(const UnpackTable& table, const uint8_t* packed, size_t packedBytes, uint8_t* samples, size_t count) {
    const auto indicesA = hn::LoadU(kBytes, table.a.data()), indicesB = hn::LoadU(kBytes, table.b.data());
    const auto scaleA = hn::LoadU(kWords, table.scaleA.data()), scaleB = hn::LoadU(kWords, table.scaleB.data());
    const auto maskB = hn::Set(kWords, table.maskB);
    size_t done = 0;
    for (; done + kVectorSamples <= count && packedBytes >= 16; done += kVectorSamples) {
        const auto bytes = hn::LoadU(kBytes, packed);
        const auto a = hn::BitCast(kWords, hn::TableLookupBytesOr0(bytes, indicesA));
        const auto b = hn::BitCast(kWords, hn::TableLookupBytesOr0(bytes, indicesB));
        const auto atTop = hn::Or(hn::Mul(a, scaleA), hn::And(hn::MulHigh(b, scaleB), maskB));
        hn::StoreU(hn::BitCast(kBytes, hn::ShiftRightSame(atTop, table.shift)), kBytes, samples);
        samples += 2 * kVectorSamples;
        packed += table.vectorBytes;
        packedBytes -= table.vectorBytes;
    }
    return done;
}

size_t Pack(const PackTable& table, const uint8_t* samples, size_t count, uint8_t* packed, size_t packedBytes) {
    const auto maskA = hn::Set(kWords, table.maskA), maskB = hn::Set(kWords, table.maskB);
    const auto scaleA = hn::LoadU(kWords, table.scaleA.data()), scaleB = hn::LoadU(kWords, table.scaleB.data());
    const auto indicesB = hn::LoadU(kBytes, table.b.data());
    const auto indicesA0 = hn::LoadU(kBytes, table.a[0].data()), indicesA1 = hn::LoadU(kBytes, table.a[1].data());
    const auto indicesA2 = hn::LoadU(kBytes, table.a[2].data()), indicesA3 = hn::LoadU(kBytes, table.a[3].data());
    size_t done = 0;
    for (; done + kVectorSamples <= count && packedBytes >= 16; done += kVectorSamples) {
        const auto words = hn::BitCast(kWords, hn::LoadU(kBytes, samples));
        const auto a = hn::BitCast(kBytes, hn::Mul(hn::And(words, maskA), scaleA));
        const auto b = hn::BitCast(kBytes, hn::MulHigh(hn::And(words, maskB), scaleB));
        const auto two = hn::Or(hn::TableLookupBytesOr0(a, indicesA0), hn::TableLookupBytesOr0(a, indicesA1));
        const auto four = hn::Or(hn::TableLookupBytesOr0(a, indicesA2), hn::TableLookupBytesOr0(a, indicesA3));
        hn::StoreU(hn::Or(hn::Or(two, four), hn::TableLookupBytesOr0(b, indicesB)), kBytes, packed);
        samples += 2 * kVectorSamples;
        packed += table.vectorBytes;  // the next samples overwrite the bytes stored beyond
        packedBytes -= table.vectorBytes;
    }
    return done;
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {
namespace {

static_assert(std::endian::native == std::endian::little, "samples are little-endian words");

template <class Table>
constexpr std::array<Table, kPackings> TablesOf(Table (*tableOf)(const GroupLayout&)) {
    std::array<Table, kPackings> tables{};
    for (size_t i = 0; i < kPackings; ++i) tables[i] = tableOf(kGroupLayouts[i]);
    return tables;
}

constexpr auto kUnpackTables = TablesOf(UnpackTableOf);
constexpr auto kPackTables = TablesOf(PackTableOf);

HWY_EXPORT(Unpack);
HWY_EXPORT(Pack);

}  // namespace

size_t UnpackVectors(Packing packing, const uint8_t* packed, size_t packedBytes, uint8_t* samples, size_t count) {
    return HWY_DYNAMIC_DISPATCH(Unpack)(kUnpackTables[static_cast<size_t>(packing)], packed, packedBytes, samples,
                                        count);
}

size_t PackVectors(Packing packing, const uint8_t* samples, size_t count, uint8_t* packed, size_t packedBytes) {
    return HWY_DYNAMIC_DISPATCH(Pack)(kPackTables[static_cast<size_t>(packing)], samples, count, packed, packedBytes);
}

}  // namespace kvx::frame
#endif
