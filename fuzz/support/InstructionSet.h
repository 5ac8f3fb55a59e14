/** Runs what follows on one of the instruction sets that were compiled and that this processor has. */
#pragma once

#include <hwy/highway.h>

#include "support/Input.h"

namespace kvx::fuzz {

inline void UseAnyInstructionSet(Input& input) {
    hwy::SetSupportedTargetsForTest(0);  // back to what the processor has
    const auto targets = hwy::SupportedAndGeneratedTargets();
    hwy::SetSupportedTargetsForTest(targets[input.Below(static_cast<uint32_t>(targets.size()))]);
}

}  // namespace kvx::fuzz
