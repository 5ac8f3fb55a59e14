#include "tools/look/LayoutSearch.h"

#include <algorithm>
#include <array>
#include <map>

#include "tools/look/Continuity.h"

namespace kvx::tool {
namespace {

struct Size {
    uint32_t width;
    uint32_t height;
};

constexpr uint64_t kLargestSide = 1u << 16;

/** The frame that fills a file, its rows starting with a byte or following each other bit by bit; or nothing. */
std::optional<frame::SourceView> ViewThatFills(const Bytes& content, const frame::Format& layout, const Size& size) {
    const uint64_t rowBytes = frame::RowBytes(layout, size.width);
    const bool isPadded = rowBytes * size.height == content.size();
    if (!isPadded && frame::ImageBytes(layout, size.width, size.height, 0) != content.size()) {
        return std::nullopt;
    }
    return frame::SourceView{.data = content.data(),
                             .width = size.width,
                             .height = size.height,
                             .stride = isPadded ? static_cast<ptrdiff_t>(rowBytes) : 0,
                             .capacity = content.size(),
                             .format = layout};
}

/** Sizes to try: the height follows from the width. */
std::vector<Size> SizesToTry(const frame::Format& layout, const KnownFacts& known, uint64_t bytes) {
    constexpr double kWidest = 2.4;  // landscape or portrait
    const uint64_t first = known.width.value_or(4);
    const uint64_t last = known.width.value_or(kLargestSide);
    std::vector<Size> sizes;
    for (uint64_t width = first; width >= 1 && width <= std::min(last, kLargestSide); width += 4) {
        // Rows may share bytes: more precisely by eight of them.
        const uint64_t height =
            known.height.value_or(8 * bytes / frame::RowBytes(layout, 8 * static_cast<uint32_t>(width)));
        const double aspect = static_cast<double>(width) / std::max(1.0, static_cast<double>(height));
        if (height >= 1 && height <= kLargestSide &&
            (known.width || known.height || std::max(aspect, 1 / aspect) <= kWidest)) {
            sizes.push_back({static_cast<uint32_t>(width), static_cast<uint32_t>(height)});
        }
    }
    return sizes;
}

/** Whether packing the samples gives the file again: all bits that they do not use are zero. */
bool HasNoOtherBits(const Bytes& content, const frame::SourceView& view, const RawFrame& frame) {
    double largest = 0;
    cv::minMaxLoc(frame.samples, nullptr, &largest);
    const auto padding = view.stride == 0 ? frame::RowPadding::Image : frame::RowPadding::Line;
    return largest <= frame::White(view.format) && EncodePacked(frame.samples, view.format, padding) == content;
}

std::vector<frame::Format> Layouts(const KnownFacts& known) {
    std::vector<frame::Format> layouts;
    for (const auto layout : {frame::Layout::Plain, frame::Layout::MsbAligned, frame::Layout::BigEndian,
                              frame::Layout::Pfnc, frame::Layout::GigE, frame::Layout::Mipi}) {
        for (const uint8_t bits : std::array<uint8_t, 5>{8, 10, 12, 14, 16}) {
            const frame::Format format{frame::Family::Mono, bits, layout};
            if (frame::IsValid(format) && known.bits.value_or(bits) == bits) {
                layouts.push_back(format);
            }
        }
    }
    return layouts;
}

/** Of candidates in which a sample takes the same room only those of the smallest depth are plausible. */
void DropNeedlessDepths(std::vector<LayoutCandidate>& candidates) {
    std::map<uint64_t, uint8_t> smallest;
    const auto room = [](const LayoutCandidate& candidate) { return frame::RowBytes(candidate.layout, 8); };
    for (const LayoutCandidate& candidate : candidates) {
        uint8_t& bits = smallest.try_emplace(room(candidate), candidate.layout.bits).first->second;
        bits = std::min(bits, candidate.layout.bits);
    }
    const auto isNeedless = [&](const LayoutCandidate& candidate) {
        return candidate.layout.bits > smallest.at(room(candidate));
    };
    candidates.erase(std::remove_if(candidates.begin(), candidates.end(), isNeedless), candidates.end());
}

}  // namespace

std::vector<LayoutCandidate> FindLayouts(const Bytes& content, const KnownFacts& known, size_t count) {
    std::vector<LayoutCandidate> candidates;
    for (const frame::Format& layout : Layouts(known)) {
        for (const Size& size : SizesToTry(layout, known, content.size())) {
            const auto view = ViewThatFills(content, layout, size);
            if (!view) {
                continue;
            }
            const RawFrame frame = UnpackFrame(*view);
            if (!HasNoOtherBits(content, *view, frame)) {
                break;  // the same for every size
            }
            candidates.push_back({layout, frame.samples, Continuity(frame.samples)});
        }
    }
    DropNeedlessDepths(candidates);
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const LayoutCandidate& a, const LayoutCandidate& b) { return a.continuity > b.continuity; });
    candidates.resize(std::min(candidates.size(), count));
    return candidates;
}

}  // namespace kvx::tool
