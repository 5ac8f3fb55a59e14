#include "framework/Bands.h"

#include <gtest/gtest.h>

namespace kvx::test {
namespace {

TEST(Bands, AsManyThreadsAsThereIsWorkForUpToABound) {
    const int64_t most = std::max(64, 2 * omp_get_num_procs());
    struct Case {
        int64_t pieces, wanted, team;
    };
    for (const Case& c : {Case{0, 0, 1}, {1, 8, 1}, {3, 8, 3}, {100, 8, 8}, {64, 1000, 64}, {100000, 100000, most}})
        EXPECT_EQ(TeamSize(c.pieces, c.wanted), c.team) << c.pieces << " pieces, " << c.wanted << " wanted";
    const int before = omp_get_max_threads();
    omp_set_num_threads(5);
    EXPECT_EQ(TeamSize(100), 5);
    omp_set_num_threads(before);
}

}  // namespace
}  // namespace kvx::test
