#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "tools/frames/FrameReader.h"
#include "tools/tune/MosaicLevels.h"

namespace kvx::tool {

/** A frame, and the same mosaic at halves of its size, down to one that fits a small window. */
struct TunedFrame {
    std::string path;
    std::string name;  ///< for messages and titles
    FrameInput input;
    std::vector<RawFrame> levels;  ///< the first is the frame itself
    /** The camera's profile for each level; null without a camera. */
    std::vector<std::shared_ptr<const frame::CameraProfile>> cameras;

    cv::Rect Bounds(size_t level) const {
        return {{}, levels[level].samples.size()};
    }
};

/** The frames to look at. Reads a frame when it is asked for and keeps the last one only: frames may be huge. */
class FrameStore {
public:
    FrameStore(std::vector<std::string> paths, const FrameRequest& request,
               std::shared_ptr<const frame::CameraProfile> camera);

    const std::vector<std::string>& Paths() const {
        return m_paths;
    }
    const FrameRequest& Request() const {
        return m_request;
    }
    const std::shared_ptr<const frame::CameraProfile>& Camera() const {
        return m_camera;
    }

    /** Throws ExitCode::Usage for an index that there is not, and what ReadFrame() throws. */
    std::shared_ptr<const TunedFrame> Get(size_t index);
    /** Reads the frame again when it is asked for: its sidecar has changed. */
    void Forget();

private:
    std::vector<std::string> m_paths;
    FrameRequest m_request;
    std::shared_ptr<const frame::CameraProfile> m_camera;
    size_t m_last = 0;
    std::shared_ptr<const TunedFrame> m_frame;
};

}  // namespace kvx::tool
