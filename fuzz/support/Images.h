/** Arbitrary image records with buffers of exactly the size that they describe. */
#pragma once

#include <memory>
#include <vector>

#include "KvxDemosaicing/KvxImage.h"
#include "KvxDemosaicing/KvxPixelFormat.h"
#include "support/GuardedBuffer.h"

namespace kvx::fuzz {

/** Inputs with larger images are skipped. */
constexpr uint64_t kMostBytes = 1 << 17;

/** Mostly one of the known formats, `colourModel` (the top byte of a code) more often than others. */
inline uint32_t DrawFormat(Input& input, uint8_t colourModel) {
    const uint32_t kind = input.Below(16);
    if (kind == 0) return input.Take<uint32_t>();
    const _KvxPixelFormat* format = nullptr;
    for (uint32_t start = input.Take<uint8_t>(), i = 0; i < 256; ++i) {
        format = KvxPixelFormat_ByIndex((start + i) % 256);
        if (format && (kind == 1 || format->pixelType >> 24 == colourModel)) break;
    }
    return format ? format->pixelType : 0;
}

/** Mostly small; the larger ones pass the lengths of vectors, bands and tiles. */
inline uint32_t DrawLength(Input& input) {
    const uint32_t kind = input.Below(16);
    if (kind == 0) return input.Take<uint32_t>();
    return kind == 1 ? input.Below(1200) : input.Below(70);
}

/** Mostly a step that holds a row of `rowBytes`. */
inline uint32_t DrawStep(Input& input, uint64_t rowBytes) {
    const uint32_t kind = input.Below(16);
    if (kind == 0) return input.Take<uint32_t>();
    if (kind == 1) return static_cast<uint32_t>(rowBytes - input.Below(5));
    return static_cast<uint32_t>(rowBytes + (kind < 6 ? 0 : input.Below(70)));
}

inline uint32_t SampleBytes(uint32_t pixelType) {
    return (pixelType & 0xFF00) == 0x0100 ? 1 : 2;
}

/** One image of a call. */
struct Image {
    _KvxImage record{};
    std::unique_ptr<GuardedBuffer> buffer;

    /** @return false when the record needs more than kMostBytes. `lastRow`: bytes of it; all others have lineStep */
    bool Allocate(Input& input, uint64_t rows, uint64_t lastRow) {
        uint64_t bytes = rows == 0 ? 0 : (rows - 1) * record.lineStep + lastRow;
        if (record.lineStep > INT32_MAX || lastRow > record.lineStep) bytes = 0;  // to be refused before it is touched
        if (bytes > kMostBytes) return false;
        buffer = std::make_unique<GuardedBuffer>(bytes, input.Flag() ? Edge::End : Edge::Begin);
        record.data = input.Below(32) == 0 ? nullptr : buffer->Data();
        record.imageSize = static_cast<uint32_t>(bytes);
        return true;
    }
};

/**
 * Runs `call` on a read-only source. Its result must be documented; it may change only bytes at positions in a row for
 * which `mayChange` is true, and only when it succeeds.
 */
template <class Call, class MayChange>
void Convert(Input& input, const Image& src, const Image& dst, std::initializer_list<uint32_t> documented,
             const Call& call, const MayChange& mayChange) {
    input.Fill(src.buffer->Data(), src.buffer->Size());
    src.buffer->MakeReadOnly();
    if (dst.buffer->Size() > 0) std::memset(dst.buffer->Data(), 0xA5, dst.buffer->Size());  // zeros written show, too
    const auto before = dst.buffer->Content();
    const uint32_t result = call();
    RequireOneOf(result, documented);
    const auto after = dst.buffer->Content();
    for (size_t i = 0; i < before.size(); ++i)
        Require(after[i] == before[i] || (result == 0 && mayChange(i % dst.record.lineStep)),
                "only pixels of a picture that succeeds are written");
}

}  // namespace kvx::fuzz
