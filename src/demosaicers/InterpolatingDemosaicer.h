/** What the interpolating TrueSense demosaicers share: latching the arguments, the threads' memory, bands of rows. */
#pragma once

#include <omp.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "KvxTrueSense/IDemConvertion.h"
#include "demosaicers/HalfRows.h"
#include "demosaicers/TrueSenseFrame.h"

namespace kvx {

/** Large enough that the rows computed twice, at the seams of bands, do not matter; small enough to spread. */
constexpr int kBandRows = 128;

template <class T>
class InterpolatingDemosaicer : public IDemosaicing, public IDemConvertion<T> {
public:
    void CleanMemory() noexcept override;
    bool IsThis(IDemosaicing* other) noexcept final;

    void SetOutputPixelType(bool withAlpha, bool bgrOrder) noexcept final;
    int Init(const T* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth, T* dst, int dstLineStep,
             unsigned char grid, tagTrueSenseParam* params) noexcept final;
    int Calculate() noexcept final;
    int InitRGB(const unsigned short* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                unsigned char* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params) noexcept final;
    int CalculateRGB() noexcept final;

protected:
    InterpolatingDemosaicer(OddDepths oddDepths, int bandRows) : m_oddDepths(oddDepths), m_bandRows(bandRows) {}

    /** Makes working memory of the demosaicer's own ready for Frame(). @return 0 or 9 */
    virtual int Reserve() noexcept {
        return KvxResult_Success;
    }
    /** Converts Frame(). @return 0 or 9 */
    virtual int Convert() noexcept = 0;

    const TrueSenseFrame& Frame() const {
        return m_frame;
    }

    /**
     * Runs `body(workspace, begin, end)` for bands of the rows [begin, end), spread over the frame's threads. The
     * caller's thread count stays as it is.
     */
    template <class Body>
    void ForBands(int begin, int end, const Body& body) const noexcept {
        const int rows = end - begin, needed = (rows - 1) / m_bandRows + 1;
        const int threads = std::min(static_cast<int>(m_workspaces.size()), needed);
        const int bands = std::min((needed + threads - 1) / threads * threads, rows);  // the same share for each thread
        const auto bandAt = [=](int index) { return begin + static_cast<int>(int64_t{rows} * index / bands); };
        const TrueSenseWorkspace* workspaces = m_workspaces.data();
#pragma omp parallel for num_threads(threads) schedule(dynamic) default(none) shared(bands, bandAt, workspaces, body)
        for (int index = 0; index < bands; ++index)
            body(workspaces[omp_get_thread_num()], bandAt(index), bandAt(index + 1));
    }

private:
    enum class Bound { Nothing, Samples, Bytes };

    int Bind(const TrueSenseCall& call, Bound bound) noexcept;
    int ReserveWorkspaces() noexcept;

    OddDepths m_oddDepths;
    int m_bandRows;
    bool m_withAlpha = false, m_bgrOrder = false;
    Bound m_bound = Bound::Nothing;  // which of the two pairs of calls has begun
    TrueSenseFrame m_frame{};
    std::vector<TrueSenseWorkspace> m_workspaces;  // one for each thread that can have a band
    int m_reservedWidth = 0;                       // the working width they have room for
};

}  // namespace kvx
