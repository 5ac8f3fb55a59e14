// The replies about settings as files and texts, and the fit of a chart, which is one of their sources.
#include <filesystem>
#include <nlohmann/json.hpp>

#include "tools/calibrate/ProfileFile.h"
#include "tools/console/Arguments.h"
#include "tools/tune/ChartFit.h"
#include "tools/tune/Exports.h"
#include "tools/tune/TuneReplies.h"
#include "tools/tune/TuneService.h"

namespace kvx::tool {

TuneReply TuneService::Chart(const TuneRequest& request) {
    std::optional<std::array<cv::Point2d, 4>> corners;
    if (request.query.contains("corners")) {
        const std::array<double, 8> numbers = ParseNumbers<8>("corners", TextIn(request, "corners"));
        corners.emplace();
        for (size_t i = 0; i < corners->size(); ++i) (*corners)[i] = {numbers[2 * i], numbers[2 * i + 1]};
    }
    const std::lock_guard lock(m_mutex);
    return JsonReply(FitChart(*ConversionFor(request), corners));
}

std::string TuneService::ProfilePath(const TunedFrame& frame) const {
    if (!m_input.cameraPath.empty()) return m_input.cameraPath;
    const std::filesystem::path path(frame.path);
    return (path.parent_path() / (path.stem().string() + "-camera.json")).string();
}

TuneReply TuneService::Export(const TuneRequest& request) {
    const std::lock_guard lock(m_mutex);
    const auto conversion = ConversionFor(request);
    const Bytes sidecar = SidecarContent(SidecarOf(*conversion));
    const Exports exports = ExportsOf(*conversion, m_input.cameraPath);
    return JsonReply({{"sidecar", std::string(sidecar.begin(), sidecar.end())},
                      {"sidecarPath", SidecarPath(conversion->Frame().path)},
                      {"profilePath", ProfilePath(conversion->Frame())},
                      {"commandLine", exports.commandLine},
                      {"python", exports.python},
                      {"gstreamer", exports.gstreamer}});
}

TuneReply TuneService::Save(const TuneRequest& request) {
    const std::lock_guard lock(m_mutex);
    const auto conversion = ConversionFor(request);
    const bool isProfile = ParseChoice<bool>("what", TextIn(request, "what"), {{"profile", true}, {"sidecar", false}});
    const TunedFrame& frame = conversion->Frame();
    const std::string path = isProfile ? ProfilePath(frame) : SidecarPath(frame.path);
    if (std::filesystem::exists(path) && TextIn(request, "overwrite") != "yes") {
        return Refusal(409, path + " exists");
    }
    if (isProfile) {
        SaveProfile(ProfileOf(*conversion), path);
    } else {
        WriteSidecar(frame.path, SidecarOf(*conversion));
        m_frames.Forget();
        m_conversions.clear();
    }
    return JsonReply({{"path", path}});
}

}  // namespace kvx::tool
