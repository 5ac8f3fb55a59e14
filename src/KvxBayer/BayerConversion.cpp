#include "KvxBayer/BayerConversion.h"

#include <algorithm>
#include <cstring>

#include "KvxBayer/BayerGeometry.h"
#include "KvxBayer/MosaicRow.h"
#include "KvxDemosaicing/KvxBayer.h"
#include "framework/PixelFormats.h"

namespace kvx {
namespace {

constexpr size_t kChannels = 3;

size_t SampleSizeOf(const _KvxImage& src) {
    return Is8Bit(src.pixelType) ? 1 : 2;
}

/** A frame whose rows are converted each by itself. */
class Frame {
public:
    Frame(const _KvxImage& src, const _KvxImage& dst, BayerPattern pattern, ChannelOrder order, GreenRule rule,
          const BayerOutput& output, SlotBytes slot)
        : m_src(src),
          m_dst(dst),
          m_greenFirst(IsGreenFirst(pattern)),
          m_topColourFirst(IsBlueOnTop(pattern) == (order == ChannelOrder::BGR)),
          m_rule(rule),
          m_output(output),
          m_slot(slot) {}

    void ConvertRow(int64_t row) const {
        uint8_t* out = RowOf(m_dst, row);
        if (m_src.width < 3 || m_src.height < 3) {  // no site has all its neighbours
            std::memset(out, 0, PictureBytes());
        } else {
            const int64_t centre = std::clamp<int64_t>(row, 1, int64_t{m_src.height} - 2);  // border rows are copies
            const bool odd = centre % 2 != 0;
            ConvertMosaicRow({.above = RowOf(m_src, centre - 1),
                              .centre = RowOf(m_src, centre),
                              .below = RowOf(m_src, centre + 1),
                              .sampleSize = SampleSizeOf(m_src),
                              .width = m_src.width,
                              .greenFirst = m_greenFirst != odd,
                              .rowColourFirst = m_topColourFirst != odd,
                              .rule = m_rule,
                              .output = m_output},
                             out);
        }
        if (m_slot == SlotBytes::Four) std::memset(out + PictureBytes(), 0, SlotRowBytes() - PictureBytes());
    }

private:
    static uint8_t* RowOf(const _KvxImage& image, int64_t row) {
        return static_cast<uint8_t*>(image.data) + row * int64_t{image.lineStep};
    }
    size_t PictureBytes() const {
        return m_src.width * kChannels * (m_output.form == BayerOutput::Samples ? SampleSizeOf(m_src) : 1);
    }
    size_t SlotRowBytes() const {
        return std::min<size_t>(m_dst.lineStep, size_t{4} * m_src.width);
    }

    const _KvxImage& m_src;
    const _KvxImage& m_dst;
    bool m_greenFirst;      // at the top left
    bool m_topColourFirst;  // the red or blue of the top row is the first sample of a pixel
    GreenRule m_rule;
    BayerOutput m_output;
    SlotBytes m_slot;
};

}  // namespace

ChannelOrder OrderOf(const _KvxImage& dst) noexcept {
    return IsBlueFirst(dst.pixelType) ? ChannelOrder::BGR : ChannelOrder::RGB;
}

GreenRule RuleOf(int algorithm) noexcept {
    return algorithm == KvxBayerAlgorithm_EdgeAware ? GreenRule::EdgeAware : GreenRule::Mean;
}

uint32_t ConvertBayer(const _KvxImage& src, const _KvxImage& dst, BayerPattern pattern, ChannelOrder order,
                      GreenRule rule, const BayerOutput& output, SlotBytes slot) noexcept {
    const uint32_t result = CheckBayerGeometry(src, dst, output);
    if (result != KvxResult_Success) return result;

    const Frame frame(src, dst, pattern, order, rule, output, slot);
    const auto height = static_cast<int64_t>(src.height);
    constexpr uint64_t pixelsWorthThreads = 1 << 16;  // below, waking a team costs more than it saves
    constexpr int rowsAtOnce = 16;                    // so that a thread that is held up holds up little
#pragma omp parallel for schedule(dynamic, rowsAtOnce) default(none) \
    shared(frame, height, rowsAtOnce) if (uint64_t{src.width} * src.height > pixelsWorthThreads)
    for (int64_t row = 0; row < height; ++row) frame.ConvertRow(row);
    return KvxResult_Success;
}

}  // namespace kvx
