#pragma once

#include <string>

#include "KvxFrame/CameraProfile.h"

namespace kvx::tool {

/**
 * The profile to add to: that of the file, or an empty one if there is no file. Prints the file's warnings. Throws
 * ExitCode::Input for a file that is no profile.
 */
frame::CameraProfile OpenProfile(const std::string& path);

/**
 * Enters format and size of the frames. Throws ExitCode::Usage if the profile has measurements of frames of another
 * format or size.
 */
void SetFrames(frame::CameraProfile& profile, const frame::Format& format, int width, int height,
               const std::string& path);

/** Writes the profile. Throws ExitCode::Output. */
void SaveProfile(const frame::CameraProfile& profile, const std::string& path);

}  // namespace kvx::tool
