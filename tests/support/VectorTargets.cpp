#include "support/VectorTargets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "support/VectorTargets.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
int64_t Target() {
    return HWY_TARGET;
}
}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {
HWY_EXPORT(Target);
namespace test {
int64_t DispatchedTarget() {
    return HWY_DYNAMIC_DISPATCH(Target)();
}
}  // namespace test
}  // namespace kvx
#endif
