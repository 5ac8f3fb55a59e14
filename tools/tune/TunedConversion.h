#pragma once

#include <memory>
#include <optional>

#include "KvxFrame/Converter.h"
#include "tools/convert/FinishPlan.h"
#include "tools/tune/FrameStore.h"
#include "tools/tune/TuneSettings.h"

namespace kvx::tool {

/**
 * Converts parts of a frame. What a finish measures is measured once, in the whole frame, so that a part is the same as
 * in the whole picture. Used by one thread at a time.
 */
class TunedConversion {
public:
    /** Throws what PlanFinish() and MakeConverter() throw. */
    TunedConversion(std::shared_ptr<const TunedFrame> frame, TuneSettings settings);

    /** A part of the picture of a level: CV_8UC3, blue first. Throws ExitCode::Usage for a part outside. */
    cv::Mat Part(size_t level, const cv::Rect& part);

    const TunedFrame& Frame() const {
        return *m_frame;
    }
    const TuneSettings& Settings() const {
        return m_settings;
    }
    const FinishPlan& Plan() const {
        return m_plan;
    }
    /** The plan's finish with the measured values as given ones. */
    const std::optional<frame::Finish>& Fixed() const {
        return m_fixed;
    }
    const frame::Converter& Converter() const {
        return m_converter;
    }
    /** Whether a part can differ from the whole picture, as the conversion measures noise in what it converts. */
    bool MeasuresNoise() const;

    double Seconds() const {
        return m_seconds;
    }
    /** Pixels that the last part took, with those around it. */
    size_t Pixels() const {
        return m_pixels;
    }

private:
    std::shared_ptr<const TunedFrame> m_frame;
    TuneSettings m_settings;
    FinishPlan m_plan;
    std::optional<frame::Finish> m_fixed;
    frame::Converter m_converter;
    double m_seconds = 0;
    size_t m_pixels = 0;
};

}  // namespace kvx::tool
