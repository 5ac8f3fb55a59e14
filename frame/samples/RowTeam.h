/** Threads that fill the rows of a frame. */
#pragma once

#include <vector>

#include "frame/base/Team.h"
#include "frame/samples/SampleRow.h"
#include "frame/view/Checks.h"

namespace kvx::frame {

/** The threads for a checked frame, each with a row of words to work on. */
class RowTeam {
public:
    RowTeam(const DestinationView& frame, int threads) : m_frame(frame), m_size(SizeFor(frame, threads)) {
        m_samples.resize(size_t{frame.width} * m_size);
    }

    /** Calls `fill(row, words)` for all rows; it must not throw. */
    template <class Fill>
    void Run(const Fill& fill) {
        ForRows(m_frame.height, m_size,
                [&](uint32_t row, int thread) { fill(row, m_samples.data() + size_t{m_frame.width} * thread); });
    }

private:
    static int SizeFor(const DestinationView& frame, int threads) {
        CheckThreads(threads);
        if (IsSequence(frame.format, frame.stride)) return 1;  // rows share bytes
        return TeamForSamples(uint64_t{frame.width} * frame.height, threads);
    }

    const DestinationView& m_frame;
    int m_size;
    std::vector<uint16_t> m_samples;
};

}  // namespace kvx::frame
