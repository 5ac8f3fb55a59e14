#include "framework/DisjointSource.h"

#include <gtest/gtest.h>

namespace kvx::test {
namespace {

// That a copy has the right bytes is seen in the pictures of buffers that overlap.
TEST(DisjointSource, CopiesTheRowsWhereTheDestinationSharesTheirMemory) {
    uint8_t memory[200] = {};
    constexpr struct {
        int start, rows, rowBytes, lineStep;
        bool copied;
    } destinations[] = {
        {90, 1, 10, 10, false},   // ends where the source begins
        {90, 1, 11, 10, true},    // ends with the source's first byte
        {127, 2, 9, 9, false},    // begins after the source's last byte
        {126, 2, 9, 9, true},     // begins with it
        {0, 20, 9, 10, true},     // the source lies inside
        {113, 1, 1, 1, true},     // inside the source
        {190, 10, 5, -10, true},  // upwards from behind it: down to byte 100
        {190, 7, 5, -10, false},  // down to byte 130
        {100, 0, 7, 10, false},   // no rows
    };
    // Bytes 100 to 126: three rows of seven, ten bytes apart; the second form starts at the last row.
    for (const ByteRows& source : {ByteRows{memory + 100, 3, 7, 10}, {memory + 120, 3, 7, -10}})
        for (const auto& [start, rows, rowBytes, lineStep, copied] : destinations) {
            DisjointSource disjoint;
            const auto taken = disjoint.Take(source, {memory + start, rows, rowBytes, lineStep});
            EXPECT_EQ(taken.value().data != source.data, copied) << start << ", " << rows << " rows";
        }
}

}  // namespace
}  // namespace kvx::test
