#include "KvxFrame/SampleDepth.h"

#include <algorithm>
#include <vector>

#include "frame/base/Fail.h"
#include "frame/samples/SampleRow.h"

namespace kvx::frame {
namespace {

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
    const UsedBits used = FindUsedBits(source);
    if (used.largest > White(source.format))
        Fail(KvxResult_OutOfRange, "the largest sample is {}, but {} ends at {}: {}", used.largest, Name(source.format),
             White(source.format), LikelyCause(used, source.format));
}

}  // namespace kvx::frame
