/** What a camera profile gives to the finish of its frames. */
#pragma once

#include <optional>

#include "KvxFrame/CameraProfile.h"

namespace kvx::frame {

/**
 * A finish whose gains of 1 and identity as matrix give way to those of the profile, unless they are given; gains only
 * if none are measured.
 * @return nothing if there is no finish and the profile has neither levels nor gains nor a matrix to add
 */
std::optional<Finish> ColoursWith(const CameraProfile& profile, const std::optional<Finish>& finish, GivenParts given);

/** Replaces levels of 0 that are not given by the profile's, for frames of this format, which may have another depth.
 */
void TakeLevels(const CameraProfile& profile, const Format& format, GivenParts given, Finish& finish);

}  // namespace kvx::frame
