/** Enlarged crops, for inspection of the noise. */
#pragma once

#include <string>
#include <vector>

#include "quality/Restoration.h"

namespace kvx::quality {

/**
 * Writes crops of an image, enlarged four times: a row per gain with the original and the image of each setting.
 * Throws std::runtime_error if the file cannot be written.
 */
void DrawParts(const std::string& path, const Picture& picture, const cv::Rect& part,
               const std::vector<Setting>& settings, const std::vector<Gain>& gains);

/** Writes such crops of all flat fields and edges to a folder. */
void DrawFlatsAndEdges(const std::string& folder, const std::vector<Setting>& settings, const std::vector<Gain>& gains);

/** Rows and columns of a crop. */
constexpr int kPartSize = 96;

}  // namespace kvx::quality
