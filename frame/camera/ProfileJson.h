/** The text of a camera profile. */
#pragma once

#include <string>
#include <string_view>

#include "KvxFrame/CameraProfile.h"

namespace kvx::frame {

/**
 * Parses a profile without its dark frame. Values are not validated.
 * @param name for messages
 * @param darkFrame receives the name of the file, or ""
 */
CameraProfile ProfileFromJson(std::string_view json, const std::string& name, std::string& darkFrame);

/** @param darkFrame name of its file, or "" */
std::string ProfileToJson(const CameraProfile& profile, const std::string& darkFrame);

}  // namespace kvx::frame
