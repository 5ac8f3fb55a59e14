#include "tools/tune/FrameStore.h"

#include <filesystem>

#include "tools/frames/FrameError.h"

namespace kvx::tool {
namespace {

/** Frames that fit these sizes need no smaller level. */
constexpr int kSmallWindow = 320;

std::shared_ptr<const TunedFrame> Load(const std::string& path, const FrameRequest& request,
                                       const std::shared_ptr<const frame::CameraProfile>& camera) {
    auto frame = std::make_shared<TunedFrame>();
    frame->path = path;
    frame->name = std::filesystem::path(path).filename().string();
    frame->input = ReadFrame(path, request);
    if (camera) {
        WithExitCode(ExitCode::Usage, frame->name + ": --camera",
                     [&] { frame::RequireFit(*camera, ViewOf(frame->input.frame)); });
    }
    frame->levels.push_back(frame->input.frame);
    frame->cameras.push_back(camera);
    while (std::max(frame->levels.back().samples.cols, frame->levels.back().samples.rows) > kSmallWindow) {
        frame->levels.push_back(Halved(frame->levels.back()));
        const auto& finer = frame->cameras.back();
        frame->cameras.push_back(finer ? std::make_shared<frame::CameraProfile>(Halved(*finer)) : nullptr);
    }
    return frame;
}

}  // namespace

FrameStore::FrameStore(std::vector<std::string> paths, const FrameRequest& request,
                       std::shared_ptr<const frame::CameraProfile> camera)
    : m_paths(std::move(paths)), m_request(request), m_camera(std::move(camera)) {}

std::shared_ptr<const TunedFrame> FrameStore::Get(size_t index) {
    if (index >= m_paths.size()) {
        Fail(ExitCode::Usage, "there is no frame {}", index);
    }
    if (!m_frame || m_last != index) {
        m_frame.reset();
        m_frame = Load(m_paths[index], m_request, m_camera);
        m_last = index;
    }
    return m_frame;
}

void FrameStore::Forget() {
    m_frame.reset();
}

}  // namespace kvx::tool
