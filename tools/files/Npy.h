#pragma once

#include <string>

#include "tools/files/Bytes.h"
#include "tools/files/Picture.h"

namespace kvx::tool {

/** Whether the content starts like a NumPy file. */
bool IsNpy(const Bytes& content);

/**
 * An array of uint8 or uint16 in either byte order: (rows, columns) as a grey picture, (rows, columns, 3) as a colour
 * one, red first. Throws ExitCode::Input for other arrays and damaged files, ExitCode::Frame for a size that no frame
 * has; `name` is for messages.
 */
Picture DecodeNpy(const Bytes& content, const std::string& name);

/** Such an array of little-endian samples. */
Bytes EncodeNpy(const cv::Mat& pixels);

}  // namespace kvx::tool
