#include "tools/tune/TunedConversion.h"

#include <chrono>

#include "KvxFrame/Geometry.h"
#include "tools/convert/ConverterOptions.h"
#include "tools/frames/Formats.h"
#include "tools/frames/FrameConversion.h"
#include "tools/frames/FrameError.h"

namespace kvx::tool {
namespace {

/**
 * Pixels around a part that can change it, rounded up from the 25 of `fine`; parts also start at multiples of it, so
 * that all algorithms see the same tiles and cells as in the whole frame.
 */
constexpr int kContext = 32;

cv::Rect WithContext(const cv::Rect& part, const cv::Rect& bounds) {
    const int left = part.x / kContext * kContext - kContext, top = part.y / kContext * kContext - kContext;
    const int right = (part.br().x / kContext + 2) * kContext, bottom = (part.br().y / kContext + 2) * kContext;
    return cv::Rect(left, top, right - left, bottom - top) & bounds;
}

std::optional<frame::Finish> WithMeasured(std::optional<frame::Finish> finish, const RawFrame& frame) {
    if (finish && finish->whiteBalance != frame::WhiteBalance::Given) {
        finish->gains = frame::MeasureGains(ViewOf(frame), *finish);
        finish->whiteBalance = frame::WhiteBalance::Given;
    }
    if (finish && finish->autoExposure) {
        finish->exposure += frame::MeasureExposure(ViewOf(frame), *finish);
        finish->autoExposure = false;
    }
    return finish;
}

}  // namespace

TunedConversion::TunedConversion(std::shared_ptr<const TunedFrame> frame, TuneSettings settings)
    : m_frame(std::move(frame)),
      m_settings(std::move(settings)),
      m_plan(PlanFinish(m_settings.convert.finish, m_frame->input, m_frame->name)),
      m_fixed(WithExitCode(ExitCode::Usage, m_frame->name,
                           [this] { return WithMeasured(m_plan.finish, m_frame->input.frame); })),
      m_converter(MakeConverter(m_settings.convert, m_frame->input.frame.format.family, std::nullopt)) {
    WithExitCode(ExitCode::Usage, m_frame->name, [this] { m_converter.SetFinish(m_fixed, frame::kAllGiven); });
}

cv::Mat TunedConversion::Part(size_t level, const cv::Rect& part) {
    if (level >= m_frame->levels.size() || part.empty() || (part & m_frame->Bounds(level)) != part) {
        Fail(ExitCode::Usage, "{}: there is no such part of the picture", m_frame->name);
    }
    const cv::Rect around = WithContext(part, m_frame->Bounds(level));
    const _KvxRect region{static_cast<uint32_t>(around.x), static_cast<uint32_t>(around.y),
                          static_cast<uint32_t>(around.width), static_cast<uint32_t>(around.height)};
    if (m_settings.convert.finish.camera) {
        m_converter.SetCamera(m_frame->cameras[level], frame::Site{region.x, region.y});
    }
    const auto start = std::chrono::steady_clock::now();
    const Picture picture = ConvertFrame(m_converter, frame::Crop(ViewOf(m_frame->levels[level]), region),
                                         RequireFormat("RGB8"), m_frame->name);
    m_seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    m_pixels = picture.pixels.total();
    return picture.pixels(part - around.tl());
}

bool TunedConversion::MeasuresNoise() const {
    const std::string name = m_converter.AlgorithmName();
    const bool isNoiseReducing = m_frame->input.frame.format.family == frame::Family::TrueSense &&
                                 (name == "simple" || name == "kodak-like" || name == "kodak");
    return isNoiseReducing || m_settings.convert.finish.defects == frame::Defects::Auto;
}

}  // namespace kvx::tool
