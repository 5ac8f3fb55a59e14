#include "tools/convert/DngFacts.h"

#include <algorithm>
#include <string_view>

namespace kvx::tool {

bool AsksForPicture(const ConvertSettings& settings) {
    const FinishRequest& finish = settings.finish;
    return finish.isNatural || finish.exposure || finish.tone || finish.defects != frame::Defects::Listed ||
           !settings.algorithm.empty() || !settings.settings.empty() || settings.analogGain || settings.flip;
}

Sidecar DngFacts(const FinishPlan& plan, const frame::SourceView& source, std::optional<uint64_t> orientation) {
    const frame::Finish finish = plan.finish.value_or(frame::Finish());
    const auto isChosen = [&plan](std::string_view part) {
        return std::ranges::any_of(plan.facts, [part](const FrameFact& fact) { return fact.name == part; });
    };
    Sidecar known;
    known.orientation = orientation;
    known.blackLevel = finish.blackLevel;
    if (isChosen("white level")) known.whiteLevel = finish.whiteLevel;
    if (isChosen("white balance")) {
        const bool isMeasured = finish.whiteBalance != frame::WhiteBalance::Given;
        known.gains = isMeasured ? frame::MeasureGains(source, finish) : finish.gains;
    }
    if (isChosen("matrix")) known.matrix = finish.matrix;
    return known;
}

}  // namespace kvx::tool
