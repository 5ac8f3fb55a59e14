/** The in-house Bayer interpolator, algorithm 1. docs/ipp.md explains the method. */
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "KvxBayer/BayerJob.h"
#include "KvxBayer/ipp/NarrowFrame.h"
#include "KvxBayer/ipp/Tile.h"
#include "KvxDemosaicing/KvxImage.h"

namespace kvx {

/**
 * One frame: Init() or Prepare(), then Calculate(). An object serves one thread at a time and spreads its work over
 * the cores. The picture has the same bits for any number of threads and any instruction set.
 */
class DemosaicingIPP {
public:
    /** An interpolator for samples of 1 or 2 bytes; null without memory. */
    static std::unique_ptr<DemosaicingIPP> Create(int sampleSize) noexcept;

    virtual ~DemosaicingIPP() = default;

    /**
     * Prepare() for two records: the samples keep the source's width; the order is blue-first for the BGR formats and
     * red-first for any other.
     *
     * @return 0, or a KvxResultCode: NullPointer for a null record, InvalidArgument for a source that is not an
     *         unpacked Bayer format of the class's sample size, else the codes of CheckGeometry() and Prepare()
     */
    virtual uint32_t Init(_KvxImage* dst, const _KvxImage* src) noexcept;

    /** Writes the destination. @return 0, or InvalidArgument when no frame is prepared */
    virtual uint32_t Calculate() noexcept = 0;

    /** Releases the working memory and forgets the frame. @return 0 */
    virtual uint32_t CleanMemory() noexcept = 0;

    /**
     * Makes the working memory for a job. Frames of one geometry allocate nothing after the first, unless the number
     * of threads grows. The caller keeps both buffers in place until Calculate() has returned.
     *
     * @param job passed CheckGeometry(); its buffers share no memory. Samples beyond its depth count as the largest.
     * @return 0, or a KvxResultCode: InvalidArgument for another sample size or more than 2^30 rows, NoMemory
     */
    virtual uint32_t Prepare(const BayerJob& job) noexcept = 0;

    /** Bytes of a source sample. */
    virtual int SampleSize() const noexcept = 0;

    /** Prepare(), then Calculate(). @return the code of the one that failed, or 0 */
    uint32_t Convert(const BayerJob& job) noexcept {
        const uint32_t result = Prepare(job);
        return result == 0 ? Calculate() : result;
    }

protected:
    bool m_isPrepared = false;
};

/** The interpolator for samples of one width. */
template <class Sample>
class DemosaicingIPPOf final : public DemosaicingIPP {
public:
    uint32_t Calculate() noexcept override;
    uint32_t CleanMemory() noexcept override;
    uint32_t Prepare(const BayerJob& job) noexcept override;
    int SampleSize() const noexcept override {
        return sizeof(Sample);
    }

private:
    void CutIntoTiles(int threads);
    bool MakeWorkers(size_t count);
    ipp::TileArea AreaOf(int tile) const;

    ipp::Frame m_frame{};
    ipp::NarrowFrame m_narrowFrame;
    int m_tilesAcross = 0, m_tilesDown = 0;
    int m_tileColumns = 0, m_tileRows = 0;
    std::vector<std::unique_ptr<ipp::TileWorker>> m_workers;  // one for each thread
};

using DemosaicingIPP_8 = DemosaicingIPPOf<uint8_t>;
using DemosaicingIPP_16 = DemosaicingIPPOf<uint16_t>;

}  // namespace kvx
