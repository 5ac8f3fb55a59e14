#include "tools/convert/DngFacts.h"

#include <algorithm>
#include <string_view>

#include "tools/files/Dng.h"

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

std::vector<std::string> DngHints(const Sidecar& known, const Sidecar& sidecar, const frame::CameraProfile* camera) {
    std::vector<std::string> hints;
    if (!sidecar.warning.empty()) hints.push_back(sidecar.warning);
    if (const std::string note = DngNote(known); !note.empty()) hints.push_back(note);
    if (camera != nullptr && (camera->shading.columns > 0 || !camera->darkFrame.empty() || !camera->hotPixels.empty() ||
                              !camera->deadPixels.empty())) {
        hints.emplace_back(
            "the DNG file has the samples as they are: shading, defects and fixed pattern of the camera stay in it");
    }
    return hints;
}

}  // namespace kvx::tool
