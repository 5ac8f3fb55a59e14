/** Rows of work, spread over threads. */
#pragma once

#include <omp.h>

#include <algorithm>
#include <cstdint>

namespace kvx::frame {

/**
 * Threads for work that can be cut into `pieces`, each worth a thread: never more threads than pieces, and never so
 * many that the system may refuse to start them.
 *
 * @param wanted the caller's number of threads; 0: OpenMP's setting
 * @return 1 or more
 */
inline int TeamSize(uint64_t pieces, int wanted = 0) {
    constexpr int kAlwaysFine = 64;
    const int most = wanted > 0 ? wanted : omp_get_max_threads();
    const auto team = static_cast<int>(std::clamp<uint64_t>(pieces, 1, static_cast<uint64_t>(most)));
    return team <= kAlwaysFine ? team : std::min(team, std::max(kAlwaysFine, 2 * omp_get_num_procs()));
}

/** Calls `body(row, thread)` for rows 0 to `rows` - 1; `thread` is less than `team`. `body` must not throw. */
template <class Body>
void ForRows(uint32_t rows, int team, const Body& body) {
    const int64_t band = std::max<int64_t>(rows / (int64_t{team} * 8), 1);  // small enough to balance busy processors
#pragma omp parallel for num_threads(team) schedule(dynamic, band) if (team > 1)
    for (int64_t row = 0; row < int64_t{rows}; ++row) body(static_cast<uint32_t>(row), omp_get_thread_num());
}

/** The team for processing each of a number of samples a few times. */
inline int TeamForSamples(uint64_t samples, int wanted = 0) {
    constexpr uint64_t kSamplesWorthAThread = 1 << 14;  // some ten microseconds
    return TeamSize(samples / kSamplesWorthAThread, wanted);
}

}  // namespace kvx::frame
