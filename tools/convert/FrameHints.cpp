#include "tools/convert/FrameHints.h"

#include <fmt/format.h>

#include "tools/look/SampleStatistics.h"

namespace kvx::tool {
namespace {

/** Whether the picture will be linear although no option says so. */
bool IsLinearByDefault(const FinishRequest& request, const FrameInput& input, const FinishPlan& plan) {
    const bool hasToneCurve = input.frame.format.family == frame::Family::TrueSense && !plan.finish;
    return !request.isLinear && !AsksForFinish(request) && !hasToneCurve;
}

/** The option for a black level that nobody gives, if the smallest sample is far above 0. */
std::string BlackLevelAdvice(const FrameInput& input, const FinishRequest& request) {
    const uint32_t smallest = MeasureSamples(input.frame).smallest;
    const bool isKnown = input.sidecar.blackLevel.has_value() || (request.camera && request.camera->blackLevel);
    return isKnown || smallest < frame::White(input.frame.format) / 64 ? ""
                                                                       : fmt::format(" --black-level {}", smallest);
}

}  // namespace

std::vector<std::string> FrameHints(const FinishRequest& request, const FrameInput& input, const FinishPlan& plan) {
    std::vector<std::string> hints;
    if (!request.isLinear && !input.sidecar.warning.empty()) {
        hints.push_back(input.sidecar.warning);
    }
    if (IsLinearByDefault(request, input, plan) &&
        frame::LooksLinear(ViewOf(input.frame), plan.finish.value_or(frame::Finish()))) {
        hints.push_back(
            fmt::format("looks like linear light: --look natural{} makes a picture for display (--linear "
                        "keeps the values, without this hint)",
                        BlackLevelAdvice(input, request)));
    }
    return hints;
}

}  // namespace kvx::tool
