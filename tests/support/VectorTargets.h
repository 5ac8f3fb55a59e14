/** The instruction sets that vector code was compiled for, one after the other. */
#pragma once

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <cstdint>

namespace kvx::test {

/** The instruction set that a call by run-time dispatch runs on now. */
int64_t DispatchedTarget();

/** Runs `body` on each instruction set that was compiled and that this machine has; fails when one is not taken. */
template <class Body>
void ForEachTarget(const Body& body) {
    for (const int64_t target : hwy::SupportedAndGeneratedTargets()) {
        SCOPED_TRACE(hwy::TargetName(target));
        hwy::SetSupportedTargetsForTest(target);
        EXPECT_EQ(DispatchedTarget(), target);
        body();
        hwy::SetSupportedTargetsForTest(0);
        if (testing::Test::HasFatalFailure()) return;
    }
}

}  // namespace kvx::test
