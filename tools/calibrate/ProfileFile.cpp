#include "tools/calibrate/ProfileFile.h"

#include <filesystem>

#include "tools/console/Console.h"
#include "tools/frames/FrameError.h"

namespace kvx::tool {

frame::CameraProfile OpenProfile(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) {
        return {};
    }
    frame::CameraProfile profile =
        WithExitCode(ExitCode::Input, "--output", [&] { return frame::ReadCameraProfile(path); });
    for (const std::string& warning : profile.warnings) {
        PrintMessage(warning);
    }
    return profile;
}

void SetFrames(frame::CameraProfile& profile, const frame::Format& format, int width, int height,
               const std::string& path) {
    const bool isNew = !profile.format || profile.width == 0 || profile.height == 0;
    if (!isNew && (*profile.format != format || profile.width != static_cast<uint32_t>(width) ||
                   profile.height != static_cast<uint32_t>(height))) {
        Fail(ExitCode::Usage, "{}: is for {} of {}x{}, the frames are {} of {}x{}: write another profile", path,
             frame::Name(*profile.format), profile.width, profile.height, frame::Name(format), width, height);
    }
    profile.format = format;
    profile.width = width;
    profile.height = height;
}

void SaveProfile(const frame::CameraProfile& profile, const std::string& path) {
    WithExitCode(ExitCode::Output, "--output", [&] { frame::WriteCameraProfile(profile, path); });
}

}  // namespace kvx::tool
