/** Work in bands of rows, spread over threads. */
#pragma once

#include <omp.h>

#include <algorithm>
#include <cstdint>

namespace kvx {

/**
 * How many threads work on something that can be cut into `pieces`: never more than there are pieces, and never more
 * than an upper bound, beyond which threads only cost memory and the system may refuse to start them.
 *
 * @param wanted a number of threads that the caller chose; 0 leaves it to OpenMP
 * @return 1 or more
 */
inline int TeamSize(int64_t pieces, int64_t wanted = 0) noexcept {
    constexpr int64_t always = 64;  // allowed on any machine: asking for the processors is a system call
    int64_t team = std::clamp<int64_t>(pieces, 1, wanted > 0 ? wanted : omp_get_max_threads());
    if (team > always) team = std::min(team, std::max(always, int64_t{2} * omp_get_num_procs()));
    return static_cast<int>(team);
}

/**
 * Cuts [begin, end) into `count` bands of about the same size and runs `body(thread, bandBegin, bandEnd)` for each.
 *
 * @param threads from TeamSize(); `thread` is below it. OpenMP's own thread count stays as it is.
 */
template <class Body>
void ForBands(int64_t begin, int64_t end, int64_t count, int threads, const Body& body) noexcept {
    const auto bandAt = [=](int64_t index) { return begin + (end - begin) * index / count; };
#pragma omp parallel for num_threads(threads) schedule(dynamic) default(none) shared(count, bandAt, body)
    for (int64_t index = 0; index < count; ++index) body(omp_get_thread_num(), bandAt(index), bandAt(index + 1));
}

}  // namespace kvx
