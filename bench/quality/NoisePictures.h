/** Enlarged parts of pictures, for looking at what algorithms do to noise. */
#pragma once

#include <string>
#include <vector>

#include "quality/Restoration.h"

namespace kvx::quality {

/**
 * A part of a picture, four times enlarged: a row for each gain, in it the original, then each setting's.
 * Throws std::runtime_error when the file cannot be written.
 */
void DrawParts(const std::string& path, const Picture& picture, const cv::Rect& part,
               const std::vector<Setting>& settings, const std::vector<Gain>& gains);

/** Such parts of all flat fields and edges into a folder. */
void DrawFlatsAndEdges(const std::string& folder, const std::vector<Setting>& settings, const std::vector<Gain>& gains);

/** Rows and columns of the parts that are drawn of everything. */
constexpr int kPartSize = 96;

}  // namespace kvx::quality
