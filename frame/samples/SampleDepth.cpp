#include "KvxFrame/SampleDepth.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <vector>

#include "frame/base/Fail.h"
#include "frame/samples/SampleRow.h"

namespace kvx::frame {
namespace {

/** Bits that are set in any sample of Plain words: beyond the depth, if a sample is. No copy: it reads at memory speed.
 */
uint16_t AnyBits(const SourceView& source) {
    static_assert(std::endian::native == std::endian::little, "words are little-endian");
    const ptrdiff_t stride = source.stride != 0 ? source.stride : ptrdiff_t{2} * source.width;
    uint16_t bits = 0;
    for (uint32_t row = 0; row < source.height; ++row) {
        const uint8_t* samples = static_cast<const uint8_t*>(source.data) + row * stride;
        for (uint32_t column = 0; column < source.width; ++column) {
            uint16_t sample;
            std::memcpy(&sample, samples + size_t{2} * column, sizeof sample);
            bits |= sample;
        }
    }
    return bits;
}

/** Over all samples: the set bits, as stored and with swapped bytes, and the largest value. */
struct UsedBits {
    uint16_t stored = 0;
    uint16_t swapped = 0;
    uint16_t largest = 0;
};

UsedBits FindUsedBits(const SourceView& source) {
    UsedBits used;
    std::vector<uint16_t> samples(source.width);
    for (uint32_t row = 0; row < source.height; ++row) {
        ReadRow(source, row, samples.data());
        for (const uint16_t sample : samples) {
            used.stored |= sample;
            used.largest = std::max(used.largest, sample);
        }
    }
    used.swapped = static_cast<uint16_t>(used.stored << 8 | used.stored >> 8);
    return used;
}

std::string LikelyCause(const UsedBits& used, const Format& format) {
    const uint32_t spare = 16 - format.bits;
    const auto withLayout = [format](Layout layout) {
        Format other = format;
        other.layout = layout;
        return Name(other);
    };
    if (used.swapped <= White(format))
        return "the bytes look big-endian: exchange the two bytes of each sample, or try " +
               withLayout(Layout::BigEndian);
    if ((used.stored & ((1u << spare) - 1)) == 0)
        return fmt::format("the values look left-aligned: shift them right by {} bits, or try {}", spare,
                           withLayout(Layout::MsbAligned));
    for (auto bits = static_cast<uint8_t>(format.bits + 2); bits <= 16; bits = static_cast<uint8_t>(bits + 2)) {
        const Format deeper = WithBits(format, bits);
        if (IsSource(deeper) && used.largest <= White(deeper))
            return fmt::format("the samples have more bits: try {}", Name(deeper));
    }
    return "check the format";
}

}  // namespace

void CheckSampleDepth(const SourceView& source) {
    Validate(source);
    if (source.format.bits == 8 || source.format.bits == 16 || source.format.layout != Layout::Plain) return;
    if (AnyBits(source) <= White(source.format)) return;
    const UsedBits used = FindUsedBits(source);
    Fail(KvxResult_OutOfRange, "the largest sample is {}, but {} ends at {}: {}", used.largest, Name(source.format),
         White(source.format), LikelyCause(used, source.format));
}

}  // namespace kvx::frame
