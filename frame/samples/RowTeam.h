/** Threads that fill the rows of a frame. */
#pragma once

#include <omp.h>

#include <algorithm>
#include <vector>

#include "frame/samples/SampleRow.h"
#include "frame/view/Checks.h"

namespace kvx::frame {

/** The threads that a checked frame takes, each with a row of words to work on. */
class RowTeam {
public:
    RowTeam(const DestinationView& frame, int threads) : m_frame(frame), m_size(SizeFor(frame, threads)) {
        m_samples.resize(size_t{frame.width} * m_size);
    }

    /** Calls `fill(row, words)` for all rows; it must not throw. */
    template <class Fill>
    void Run(const Fill& fill) {
#pragma omp parallel for num_threads(m_size) schedule(static) if (m_size > 1)
        for (int64_t row = 0; row < int64_t{m_frame.height}; ++row)
            fill(static_cast<uint32_t>(row), m_samples.data() + size_t{m_frame.width} * omp_get_thread_num());
    }

private:
    static int SizeFor(const DestinationView& frame, int threads) {
        constexpr uint64_t kWorthAThread = 1 << 16;  // samples
        CheckThreads(threads);
        if (IsSequence(frame.format, frame.stride)) return 1;  // rows share bytes
        const uint64_t most = std::max<uint64_t>(uint64_t{frame.width} * frame.height / kWorthAThread, 1);
        return static_cast<int>(std::min<uint64_t>(threads > 0 ? threads : omp_get_max_threads(), most));
    }

    const DestinationView& m_frame;
    int m_size;
    std::vector<uint16_t> m_samples;
};

}  // namespace kvx::frame
