#pragma once

#include <optional>
#include <string>

#include "KvxFrame/SensorNoise.h"
#include "tools/files/RawFrame.h"
#include "tools/files/Sidecar.h"

namespace kvx::tool {

/**
 * A DNG file with the samples of a Bayer frame as 16-bit words, and levels, gains, matrix and orientation of `known`.
 * Readers that apply the file's balance and matrix get the colours of our own conversion: ColorMatrix1 is the inverse
 * of the matrix, from XYZ under D65 to sensor colours, and AsShotNeutral is what it makes of white. Without gains and
 * matrix the file says that sensor colours are sRGB. DNG has one white level: the smallest of four.
 *
 * Throws ExitCode::Usage for frames that are not Bayer's, and for a matrix without an inverse or with negative white;
 * ExitCode::Output for more than 4 GiB. `name` is for messages.
 */
Bytes EncodeDng(const RawFrame& frame, const Sidecar& known, const std::optional<frame::SensorNoise>& noise,
                const std::string& name);

/** What the user should know of a DNG file with these facts: that gains or matrix are missing; often empty. */
std::string DngNote(const Sidecar& known);

}  // namespace kvx::tool
