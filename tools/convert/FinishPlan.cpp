#include "tools/convert/FinishPlan.h"

#include <fmt/ranges.h>

#include <algorithm>

#include "tools/ToolError.h"
#include "tools/frames/FrameError.h"

namespace kvx::tool {
namespace {

using Source = WhiteBalanceRequest::Source;

std::string LevelsText(const frame::Levels& levels) {
    const auto& values = levels.ofFilters;
    return levels == frame::Levels(values[0]) ? fmt::format("{}", values[0])
                                              : fmt::format("{}", fmt::join(values, ", "));
}

std::string GainsText(const frame::Gains& gains) {
    return fmt::format("{:.4g}, {:.4g}, {:.4g}", gains.red, gains.green, gains.blue);
}

/** Chooses the parts of a finish one after the other, and records them. */
class Planner {
public:
    Planner(const FinishRequest& request, const FrameInput& input, const std::string& name)
        : m_request(request), m_input(input), m_name(name) {}

    FinishPlan Plan() {
        const frame::CameraProfile camera = FromCamera();
        Choose("black level", m_request.blackLevel, &Sidecar::blackLevel, camera.blackLevel, m_finish.blackLevel,
               LevelsText);
        Choose("white level", m_request.whiteLevel, &Sidecar::whiteLevel, camera.whiteLevel, m_finish.whiteLevel,
               LevelsText);
        RequireFittingLevels();
        ChooseWhiteBalance(camera);
        Choose("matrix", m_request.matrix, &Sidecar::matrix, camera.matrix, m_finish.matrix,
               [](const auto& matrix) { return fmt::format("{}", fmt::join(matrix, ", ")); });
        ChooseExposure();
        ChooseTone();
        const auto finish = m_facts.empty() ? std::nullopt : std::optional(m_finish);
        RecordCorrections();
        return {finish, m_facts};
    }

private:
    void Record(const char* name, const std::string& value, const char* origin) {
        m_facts.push_back({name, value, origin});
    }

    /** What the camera gives besides the finish. */
    void RecordCorrections() {
        if (!m_request.camera) return;
        const frame::CameraProfile& camera = *m_request.camera;
        WithExitCode(ExitCode::Usage, m_name + ": --camera", [&] { frame::RequireFit(camera, ViewOf(m_input.frame)); });
        const size_t defects = camera.hotPixels.size() + camera.deadPixels.size();
        if (!camera.darkFrame.empty()) Record("fixed pattern", "corrected", "camera");
        if (camera.shading.columns > 0) Record("shading", "corrected", "camera");
        if (defects > 0) Record("defective pixels", fmt::format("{}", defects), "camera");
        if (camera.noise) Record("noise", "known", "camera");
    }

    /** Of a part that `sidecar` has. */
    template <typename Value>
    const char* OriginOf(std::optional<Value> Sidecar::*part) const {
        return m_input.ofFile.*part ? "file" : "sidecar";
    }

    /** The parts of a finish that the camera has, levels in samples of the frame. */
    frame::CameraProfile FromCamera() const {
        if (!m_request.camera) return {};
        const frame::Finish finish = frame::FinishWith(*m_request.camera, {}, m_input.frame.format);
        frame::CameraProfile parts;
        if (m_request.camera->blackLevel) parts.blackLevel = finish.blackLevel;
        if (m_request.camera->whiteLevel) parts.whiteLevel = finish.whiteLevel;
        if (m_request.camera->gains) parts.gains = finish.gains;
        if (m_request.camera->matrix) parts.matrix = finish.matrix;
        return parts;
    }

    template <typename Value, typename Describe>
    void Choose(const char* name, const std::optional<Value>& given, std::optional<Value> Sidecar::*part,
                const std::optional<Value>& fromCamera, Value& chosen, const Describe& describe) {
        const std::optional<Value>& fromSidecar = m_input.sidecar.*part;
        if (const std::optional<Value>& value = given ? given : fromSidecar ? fromSidecar : fromCamera) {
            chosen = *value;
            Record(name, describe(*value), given ? "options" : fromSidecar ? OriginOf(part) : "camera");
        }
    }

    void RequireFittingLevels() const {
        const frame::Format& format = m_input.frame.format;
        const double largest = frame::White(format);
        for (size_t filter = 0; filter < 4; ++filter) {
            const double black = m_finish.blackLevel.ofFilters[filter];
            const double given = m_finish.whiteLevel.ofFilters[filter], white = given == 0 ? largest : given;
            if (!(black >= 0 && black < white && white <= largest)) {
                Fail(ExitCode::Usage, "{}: black level {} and white level {} do not fit {}: 0 <= black < white <= {}",
                     m_name, black, white, frame::Name(format), largest);
            }
        }
    }

    void ChooseWhiteBalance(const frame::CameraProfile& camera) {
        const std::optional<frame::Gains>& ofSidecar = m_input.sidecar.gains;
        if (!m_request.whiteBalance || m_request.whiteBalance->source == Source::Sidecar) {
            if (ofSidecar) {
                m_finish.gains = *ofSidecar;
                Record("white balance", GainsText(*ofSidecar), OriginOf(&Sidecar::gains));
            } else if (m_request.whiteBalance) {
                Fail(ExitCode::Usage, "{}: no sidecar gives its white balance: use --white-balance auto, or give R,G,B",
                     m_name);
            } else if (m_request.isNatural) {
                m_finish.whiteBalance = frame::WhiteBalance::Auto;
                Record("white balance", "auto", "look");
            } else if (camera.gains) {
                m_finish.gains = *camera.gains;
                Record("white balance", GainsText(*camera.gains), "camera");
            }
            return;
        }
        const WhiteBalanceRequest& request = *m_request.whiteBalance;
        if (request.source == Source::Measured) {
            m_finish.whiteBalance = request.method;
            Record("white balance", request.text, "options");
            return;
        }
        m_finish.gains = request.source == Source::Given ? request.gains : GainsOfPlace(request.place);
        Record("white balance", GainsText(m_finish.gains), "options");
    }

    frame::Gains GainsOfPlace(const _KvxRect& place) const {
        return WithExitCode(ExitCode::Usage, m_name + ": --white-balance-from",
                            [&] { return frame::MeasureGainsOfGrey(ViewOf(m_input.frame), place, m_finish); });
    }

    void ChooseExposure() {
        if (!m_request.exposure && !m_request.isNatural) {
            return;
        }
        const ExposureRequest exposure = m_request.exposure.value_or(ExposureRequest{true, 0});
        m_finish.autoExposure = exposure.isAuto;
        m_finish.exposure = exposure.value;
        Record("exposure", exposure.isAuto ? "auto" : fmt::format("{} EV", exposure.value),
               m_request.exposure ? "options" : "look");
    }

    void ChooseTone() {
        if (!m_request.tone && !m_request.isNatural) {
            return;
        }
        m_finish.tone = m_request.tone.value_or(frame::ToneCurve::Srgb);
        Record("tone", m_finish.tone == frame::ToneCurve::Srgb ? "srgb" : "linear",
               m_request.tone ? "options" : "look");
    }

    const FinishRequest& m_request;
    const FrameInput& m_input;
    const std::string& m_name;
    frame::Finish m_finish;
    std::vector<FrameFact> m_facts;
};

}  // namespace

FinishPlan PlanFinish(const FinishRequest& request, const FrameInput& input, const std::string& name) {
    if (request.isLinear && AsksForFinish(request)) {
        Fail(ExitCode::Usage,
             "--linear: keeps the values: leave out --look, --tone and the other options of the finish");
    }
    if (!request.isLinear) {
        return Planner(request, input, name).Plan();
    }
    // Without a finish the component would apply its tone curve to TrueSense frames.
    const bool isTrueSense = input.frame.format.family == frame::Family::TrueSense;
    return {isTrueSense ? std::optional(frame::Finish()) : std::nullopt, {}};
}

}  // namespace kvx::tool
