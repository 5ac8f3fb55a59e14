/** Ranges of the values in a camera profile, which its checks and its correction share. */
#pragma once

#include <cstdint>

#include "KvxFrame/Format.h"

namespace kvx::frame {

/** The first of four levels that a family uses: mono frames take the fourth. */
constexpr size_t FirstFilter(Family family) {
    return family == Family::Mono ? 3 : 0;
}

inline constexpr uint32_t kMostNodes = 1024;
/** Gains of shading are fixed-point numbers of 15 bits, 12 of them binary places. */
inline constexpr int kShadingPlaces = 12;
inline constexpr float kLargestShadingGain = 7.99F;

}  // namespace kvx::frame
