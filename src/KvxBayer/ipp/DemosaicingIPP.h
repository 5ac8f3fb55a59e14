/** The in-house Bayer interpolator, algorithm 1. docs/ipp.md explains the method. */
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "KvxBayer/BayerOutput.h"
#include "KvxBayer/ipp/NarrowFrame.h"
#include "KvxBayer/ipp/Tile.h"
#include "KvxDemosaicing/KvxImage.h"

namespace kvx {

/**
 * One frame: Init(), then Calculate(). An object serves one thread at a time, and spreads its work over the cores
 * itself. The picture is the same to the bit for any number of threads and any instruction set.
 */
class DemosaicingIPP {
public:
    virtual ~DemosaicingIPP() = default;

    /**
     * Records what to convert; the base's version only that, the others make working memory too.
     *
     * Both images stay the caller's and must stay in place until Calculate() has read and written them. Frames of one
     * geometry allocate nothing after the first, as long as the number of threads does not grow.
     *
     * @param dst receives three samples a pixel, of the source's width unless SetOutput() says otherwise; blue-first
     *            for the BGR formats, red-first for any other
     * @param src samples beyond `pixelDepth` bits are taken for the largest; 0 means the depth of the format, more
     *            than a sample has all its bits
     * @return 0, or a KvxResultCode: NullPointer for a null record, InvalidArgument for a source that is not an
     *         unpacked Bayer format of the class's sample width or records that do not fit each other or their
     *         buffers or of more than 2^30 rows, ConversionFailed for a frame without pixels, NoMemory
     */
    virtual uint32_t Init(_KvxImage* dst, const _KvxImage* src) noexcept;

    /** Writes the destination. @return 0, or InvalidArgument before Init() */
    virtual uint32_t Calculate() noexcept = 0;

    /** Init(), then Calculate(). @return the code of the one that failed, or 0 */
    uint32_t Convert(_KvxImage* dst, const _KvxImage* src) noexcept {
        const uint32_t result = Init(dst, src);
        return result == 0 ? Calculate() : result;
    }

    /** Releases the working memory and forgets the frame. @return 0 */
    virtual uint32_t CleanMemory() noexcept = 0;

    /** What the next Init() and its Calculate() write; samples until this is called. */
    void SetOutput(const BayerOutput& output, SlotBytes slot = SlotBytes::AsWritten) {
        m_output = output;
        m_slot = slot;
    }

    // By the low byte of a pixel type.
    static const std::array<uint8_t, 256> s_bayerDescG;   ///< 1: green at the top-left site
    static const std::array<uint8_t, 256> s_bayerDescRB;  ///< 2: red on the top row, 3: blue on it, 0: no pattern
    static const std::array<uint8_t, 256> s_RGBBGRDesc;   ///< 4: red-first, 5: blue-first, 0: other

protected:
    _KvxImage* m_dst = nullptr;
    int m_width = 0, m_height = 0;  // each rounded up to an even number: whole cells of the pattern
    bool m_firstNotGreen = false;
    bool m_blueFirstRow = false;
    int m_maxValue = 0;  // of the output
    BayerOutput m_output{.form = BayerOutput::Samples};
    SlotBytes m_slot = SlotBytes::AsWritten;
};

/** The interpolator for samples of one width. */
template <class Sample>
class DemosaicingIPPOf final : public DemosaicingIPP {
public:
    uint32_t Init(_KvxImage* dst, const _KvxImage* src) noexcept override;
    uint32_t Calculate() noexcept override;
    uint32_t CleanMemory() noexcept override;

private:
    bool MakeWorkers();
    ipp::TileArea AreaOf(int tile) const;

    ipp::Frame m_frame{};
    ipp::NarrowFrame m_narrowFrame;
    int m_tilesAcross = 0, m_tilesDown = 0;
    int m_tileColumns = 0, m_tileRows = 0;
    std::vector<std::unique_ptr<ipp::TileWorker>> m_workers;  // one a thread
};

using DemosaicingIPP_8 = DemosaicingIPPOf<uint8_t>;
using DemosaicingIPP_16 = DemosaicingIPPOf<uint16_t>;

}  // namespace kvx
