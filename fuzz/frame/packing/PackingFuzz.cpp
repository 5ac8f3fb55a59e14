// Packed samples: any image, steps and sizes, in buffers of exactly what the image takes, or less.
#include <memory>
#include <vector>

#include "KvxFrame/Packing.h"
#include "support/GuardedBuffer.h"
#include "support/InstructionSet.h"
#include "support/Refusals.h"

using namespace kvx::fuzz;
using namespace kvx::frame;

namespace {

constexpr uint64_t kMostBytes = 1 << 17;
constexpr uint32_t kPackings = 11;

/** Samples of 16 bits with a step between rows, of either sign. */
struct Words {
    Words(Input& input, const PackedImage& image, bool mayMisalign)
        : width(image.width), height(image.height), step(2 * size_t{width} + (input.Flag() ? 0 : input.Below(30))) {
        const bool isUpwards = input.Below(4) == 0;
        const size_t lead = mayMisalign ? input.Below(2) : 0;
        const size_t size = (height - 1) * step + 2 * size_t{width};
        buffer = std::make_unique<GuardedBuffer>(lead + size, lead || input.Flag() ? Edge::End : Edge::Begin);
        lowest = buffer->Data() + lead;
        top = isUpwards ? lowest + (height - 1) * step : lowest;
        signedStep = isUpwards ? -static_cast<ptrdiff_t>(step) : static_cast<ptrdiff_t>(step);
    }
    uint16_t At(uint32_t row, uint32_t column) const {
        uint16_t word = 0;
        std::memcpy(&word, top + row * signedStep + 2 * ptrdiff_t{column}, sizeof word);
        return word;
    }
    /** All bytes but those of the samples. */
    std::vector<uint8_t> Padding() const {
        std::vector<uint8_t> padding;
        for (size_t i = 0; i < buffer->Size() - (lowest - buffer->Data()); ++i)
            if (i % step >= 2 * size_t{width}) padding.push_back(lowest[i]);
        return padding;
    }

    uint32_t width, height;
    size_t step;
    std::unique_ptr<GuardedBuffer> buffer;
    uint8_t *lowest = nullptr, *top = nullptr;
    ptrdiff_t signedStep = 0;
};

PackedImage DrawImage(Input& input) {
    PackedImage image{};
    image.packing = static_cast<Packing>(input.Below(16) ? input.Below(kPackings) : input.Take<uint8_t>());
    for (uint32_t* side : {&image.width, &image.height})
        *side = input.Below(32) == 0 ? input.Take<uint32_t>() : input.Below(input.Below(8) ? 40 : 1000);
    image.padding = static_cast<RowPadding>(input.Below(16) ? input.Below(2) : input.Take<uint8_t>());
    if (input.Below(3) == 0) image.lineStep = PackedBytes(image.packing, image.width) + input.Below(40);
    if (input.Below(32) == 0) image.lineStep = input.Take<size_t>();
    return image;
}

/** Bytes of a packed image that lie between rows. */
std::vector<uint8_t> LinePadding(const PackedImage& image, const std::vector<uint8_t>& packed) {
    std::vector<uint8_t> padding;
    for (size_t i = 0; image.lineStep != 0 && i < packed.size(); ++i)
        if (i % image.lineStep >= PackedBytes(image.packing, image.width)) padding.push_back(packed[i]);
    return padding;
}

void UseImage(Input& input, const PackedImage& image, size_t bytes, int threads) {
    const Edge edge = input.Flag() ? Edge::End : Edge::Begin;
    const size_t lacking = input.Below(8) ? 0 : 1 + input.Below(static_cast<uint32_t>(bytes));
    Words words(input, image, true), back(input, image, true);
    const GuardedBuffer packed(bytes - lacking, edge);
    input.Fill(packed.Data(), packed.Size());
    input.Fill(words.buffer->Data(), words.buffer->Size());
    words.buffer->MakeReadOnly();
    const auto before = packed.Content();
    const auto nothing = back.buffer->Content();

    const auto pack = [&] { PackImage(image, words.top, words.signedStep, packed.Data(), packed.Size(), threads); };
    const auto unpack = [&] { UnpackImage(image, packed.Data(), packed.Size(), back.top, back.signedStep, threads); };
    Require(IsRefused(pack, {0x80070007}) == (lacking > 0), "too small a buffer, and no other, is refused");
    Require(IsRefused(unpack, {0x80070007}) == (lacking > 0), "too small a buffer, and no other, is refused");
    if (lacking > 0) {
        Require(packed.Content() == before && back.buffer->Content() == nothing, "a refusal writes nothing");
        return;
    }
    const auto after = packed.Content();
    Require(LinePadding(image, after) == LinePadding(image, before), "bytes between rows stay");
    for (const uint8_t byte : back.Padding()) Require(byte == 0, "bytes between rows stay");
    const uint32_t mask = (1u << PackedDepth(image.packing)) - 1;
    for (uint32_t row = 0; row < image.height; ++row)
        for (uint32_t column = 0; column < image.width; ++column)
            Require(back.At(row, column) == (words.At(row, column) & mask), "what was packed comes back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input input(data, size);
    UseAnyInstructionSet(input);
    const PackedImage image = DrawImage(input);
    size_t bytes = 0;
    const bool isNoImage = IsRefused([&] { bytes = PackedImageBytes(image); }, {0x80070007});
    if (isNoImage || bytes > kMostBytes) {
        const GuardedBuffer packed(64), words(64);
        Require(IsRefused([&] { PackImage(image, words.Data(), 64, packed.Data(), 64); }, {0x80070007}),
                "what is no image, or larger than its buffer, is refused");
        Require(IsRefused([&] { UnpackImage(image, packed.Data(), 64, words.Data(), 64); }, {0x80070007}),
                "what is no image, or larger than its buffer, is refused");
    } else if (uint64_t{image.width} * image.height <= kMostBytes) {
        UseImage(input, image, bytes, static_cast<int>(input.Below(4)));
    }
    PackedImage told{};
    IsRefused(
        [&] {
            const size_t multiple = input.Below(8) ? 1 + input.Below(64) : input.Take<size_t>();
            told = PackedImageOfSize(image.packing, image.width, image.height, bytes, multiple);
            Require(PackedImageBytes(told) <= bytes, "what is found out fits the size");
        },
        {0x80070007});
    return 0;
}
