#include "frame/packing/PackedSizes.h"

#include "frame/base/Fail.h"
#include "frame/packing/GroupLayout.h"

namespace kvx::frame {
namespace {

// Within these no size overflows 64 bits, unless a line step makes it.
constexpr uint32_t kMaxSide = 0x7FFFFFFF;
constexpr size_t kMaxMultiple = 65536;

struct Sizes {
    uint64_t line, image;  // from the first byte to the last, by row padding
};

std::string Describe(const PackedImage& image, const Sizes& sizes) {
    return fmt::format(
        "a packed image of {} x {} samples of {} bits takes {} bytes with line padding, where each row starts on a "
        "byte, or {} with image padding, where rows follow each other without gaps",
        image.width, image.height, PackedDepth(image.packing), sizes.line, sizes.image);
}

uint64_t SizeWithoutLines(const PackedImage& image) {
    const GroupLayout& layout = LayoutOf(image.packing);
    if (layout.wholeGroups) return layout.BytesOfSequence(image.width) * image.height;
    return layout.BytesOfSequence(uint64_t{image.width} * image.height);
}

void CheckSides(const PackedImage& image) {
    CheckPacking(image.packing);
    if (image.width == 0 || image.height == 0 || image.width > kMaxSide || image.height > kMaxSide)
        Fail(KvxResult_InvalidArgument, "a packed image has 1 to 2147483647 rows and columns, not {} x {}", image.width,
             image.height);
}

/** Refuses an image that is not valid. Both sizes fit a ptrdiff_t; without gaps it is not the larger one. */
Sizes SizesOf(const PackedImage& image) {
    CheckSides(image);
    const size_t rowBytes = PackedBytes(image.packing, image.width);
    if (image.padding == RowPadding::Image && image.lineStep != 0)
        Fail(KvxResult_InvalidArgument, "an image with image padding has no line step");
    if (image.padding != RowPadding::Image && image.padding != RowPadding::Line)
        Fail(KvxResult_InvalidArgument, "the row padding is neither line nor image padding");
    if (image.lineStep != 0 && image.lineStep < rowBytes)
        Fail(KvxResult_InvalidArgument, "a packed row of {} samples takes {} bytes, more than the line step of {}",
             image.width, rowBytes, image.lineStep);
    uint64_t toLastRow = 0;
    if (__builtin_mul_overflow(uint64_t{image.height} - 1, uint64_t{LineStepOf(image)}, &toLastRow) ||
        toLastRow > PTRDIFF_MAX - rowBytes)
        Fail(KvxResult_InvalidArgument, "the packed image is larger than the address space");
    return {toLastRow + rowBytes, SizeWithoutLines(image)};
}

uint64_t SizeOf(const PackedImage& image, const Sizes& sizes) {
    return image.padding == RowPadding::Line ? sizes.line : sizes.image;
}

}  // namespace

void CheckPacking(Packing packing) {
    if (!IsPacking(packing))
        Fail(KvxResult_InvalidArgument, "there is no packing number {}", static_cast<unsigned>(packing));
}

bool RowsStartGroups(const PackedImage& image) {
    return image.padding == RowPadding::Line || LayoutOf(image.packing).wholeGroups;
}

size_t LineStepOf(const PackedImage& image) {
    return image.lineStep != 0 ? image.lineStep : PackedBytes(image.packing, image.width);
}

void CheckImageFits(const PackedImage& image, size_t size) {
    const Sizes sizes = SizesOf(image);
    if (size < SizeOf(image, sizes))
        Fail(KvxResult_InvalidArgument, "{}; the buffer has {}, and {} padding was requested", Describe(image, sizes),
             size, image.padding == RowPadding::Line ? "line" : "image");
}

std::optional<Packing> PackingOf(const Format& format) noexcept {
    for (size_t i = 0; i < kPackings; ++i)
        if (kGroupLayouts[i].layout == format.layout && kGroupLayouts[i].depth == format.bits)
            return static_cast<Packing>(i);
    return {};
}

unsigned PackedDepth(Packing packing) noexcept {
    return IsPacking(packing) ? LayoutOf(packing).depth : 0;
}

size_t PackedBytes(Packing packing, size_t samples) noexcept {
    return IsPacking(packing) ? static_cast<size_t>(LayoutOf(packing).BytesOfSequence(samples)) : 0;
}

size_t PackedImageBytes(const PackedImage& image) {
    return static_cast<size_t>(SizeOf(image, SizesOf(image)));
}

PackedImage PackedImageOfSize(Packing packing, uint32_t width, uint32_t height, size_t size, size_t multiple) {
    PackedImage image{packing, width, height};
    CheckSides(image);
    if (multiple == 0 || multiple > kMaxMultiple)
        Fail(KvxResult_InvalidArgument, "rows take a multiple of 1 to 65536 bytes, not of {}", multiple);
    const uint64_t rowBytes = LayoutOf(packing).BytesOfSequence(width);
    const uint64_t lineStep = (rowBytes + multiple - 1) / multiple * multiple;
    const Sizes sizes{lineStep * height, SizeWithoutLines(image)};
    if (size == sizes.line)
        image.lineStep = static_cast<size_t>(lineStep);
    else if (size == sizes.image)
        image.padding = RowPadding::Image;
    else
        Fail(KvxResult_InvalidArgument, "{}; the buffer has {}", Describe(image, sizes), size);
    return image;
}

}  // namespace kvx::frame
