/** What a camera profile gives to the finish of its frames. */
#pragma once

#include <optional>

#include "KvxFrame/CameraProfile.h"

namespace kvx::frame {

/**
 * A finish whose gains of 1 and identity as matrix give way to those of the profile; gains only if none are measured.
 * @return nothing if there is no finish and the profile has neither levels nor gains nor a matrix
 */
std::optional<Finish> ColoursWith(const CameraProfile& profile, const std::optional<Finish>& given);

/** Replaces levels of 0 by those of the profile, for frames of this format, whose depth may be another one. */
void TakeLevels(const CameraProfile& profile, const Format& format, Finish& finish);

}  // namespace kvx::frame
