#include "framework/DisjointSource.h"

#include <gtest/gtest.h>

#include <cstring>
#include <numeric>
#include <vector>

namespace kvx::test {
namespace {

TEST(DisjointSource, CopiesTheRowsWhereTheDestinationSharesTheirMemory) {
    std::vector<uint8_t> memory(200);
    std::iota(memory.begin(), memory.end(), uint8_t{0});
    const auto rows = [&](int start, int64_t count, int64_t rowBytes, int64_t lineStep) {
        return ByteRows{memory.data() + start, count, rowBytes, lineStep};
    };
    // Bytes 100 to 126: three rows of seven, ten bytes apart; the second form starts at the last row.
    for (const ByteRows& source : {rows(100, 3, 7, 10), rows(120, 3, 7, -10)}) {
        struct Case {
            ByteRows destination;
            bool copied;
        };
        const Case cases[] = {
            {rows(90, 1, 10, 10), false},   // ends where the source begins
            {rows(90, 1, 11, 10), true},    // ends with the source's first byte
            {rows(127, 2, 9, 9), false},    // begins after the source's last byte
            {rows(126, 2, 9, 9), true},     // begins with it
            {rows(0, 20, 9, 10), true},     // the source lies inside
            {rows(113, 1, 1, 1), true},     // inside the source
            {rows(190, 10, 5, -10), true},  // upwards from behind it: down to byte 100
            {rows(190, 7, 5, -10), false},  // down to byte 130
            {rows(100, 0, 7, 10), false},   // no rows
        };
        for (const Case& c : cases) {
            DisjointSource disjoint;
            const auto taken = disjoint.Take(source, c.destination);
            ASSERT_TRUE(taken);
            EXPECT_EQ(taken->data != source.data, c.copied) << "case " << &c - cases;
            for (int64_t row = 0; row < 3; ++row)
                EXPECT_EQ(std::memcmp(static_cast<const uint8_t*>(taken->data) + row * taken->lineStep,
                                      static_cast<const uint8_t*>(source.data) + row * source.lineStep, 7),
                          0);
        }
    }
}

}  // namespace
}  // namespace kvx::test
