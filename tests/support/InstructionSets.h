/** Runs a check once for every instruction set that was compiled and that this processor has. */
#pragma once

#include <gtest/gtest.h>

#include <hwy/highway.h>

namespace kvx::test {

template <class Check>
void ForEachInstructionSet(const Check& check) {
    int ran = 0;
    for (const int64_t target : hwy::SupportedAndGeneratedTargets()) {
        SCOPED_TRACE(hwy::TargetName(target));
        hwy::SetSupportedTargetsForTest(target);
        ASSERT_EQ(hwy::SupportedTargets(), target);
        check();
        ++ran;
    }
    hwy::SetSupportedTargetsForTest(0);  // back to what the processor has
    EXPECT_GT(ran, 0);
}

}  // namespace kvx::test
