#include "KvxBayer/BilinearWords.h"

#include <algorithm>
#include <cstring>
#include <opencv2/imgproc.hpp>

#include "KvxBayer/BilinearRow.h"
#include "KvxBayer/LibraryConversion.h"
#include "KvxBayer/Rows.h"
#include "framework/PixelFormats.h"

namespace kvx {
namespace {

/** The rows of one frame, each to be converted by itself. */
class Frame {
public:
    Frame(const _KvxImage& src, const _KvxImage& dst, int code, const BayerOutput& output)
        : m_source(RowsOf(src)),
          m_destination(RowsOf(dst)),
          m_width(src.width),
          m_height(src.height),
          m_output(output) {
        // A code is named after the second row and column of its cell; the red-first codes are the blue-first ones of
        // the pattern with red and blue exchanged, so that four cases are all.
        m_greenFirst = code == cv::COLOR_BayerGB2BGR || code == cv::COLOR_BayerGR2BGR;
        m_topColourFirst = code == cv::COLOR_BayerRG2BGR || code == cv::COLOR_BayerGR2BGR;
    }

    void ConvertRow(int64_t row) const {
        uint8_t* out = m_destination[row];
        if (m_width < 3 || m_height < 3) {  // no site has all its neighbours
            std::memset(out, 0, PictureBytes());
        } else {
            const int64_t centre = std::clamp<int64_t>(row, 1, int64_t{m_height} - 2);  // rows at the border copy
            const bool odd = centre % 2 != 0;
            ConvertBilinearRow({Source(centre - 1), Source(centre), Source(centre + 1), m_width, m_greenFirst != odd,
                                m_topColourFirst != odd, m_output},
                               out);
        }
        ClearSlots(m_output, m_destination, row, m_width);
    }

private:
    const uint16_t* Source(int64_t row) const {
        return reinterpret_cast<const uint16_t*>(m_source[row]);
    }
    size_t PictureBytes() const {
        return size_t{m_width} * 3 * (m_output.form == BayerOutput::Samples ? 2 : 1);
    }

    Rows m_source, m_destination;
    uint32_t m_width, m_height;
    BayerOutput m_output;
    bool m_greenFirst, m_topColourFirst;
};

}  // namespace

bool TakesBilinearWords(const _KvxImage& src, const _KvxImage& dst, int code, const BayerOutput& output) {
    return !IsEdgeAware(code) && !Is8Bit(src.pixelType) && RowsOf(src).IsAligned(2) &&
           (output.form != BayerOutput::Samples || RowsOf(dst).IsAligned(2));
}

void ConvertBilinearWords(const _KvxImage& src, const _KvxImage& dst, int code, const BayerOutput& output) {
    constexpr uint64_t pixelsWorthThreads = 1 << 16;  // below, waking a team costs more than it saves
    constexpr int rowsAtOnce = 16;                    // so that a thread that is held up holds up little
    const Frame frame(src, dst, code, output);
    const auto height = static_cast<int64_t>(src.height);
#pragma omp parallel for schedule(dynamic, rowsAtOnce) default(none) \
    shared(frame, height, rowsAtOnce) if (uint64_t{src.width} * src.height > pixelsWorthThreads)
    for (int64_t row = 0; row < height; ++row) frame.ConvertRow(row);
}

}  // namespace kvx
