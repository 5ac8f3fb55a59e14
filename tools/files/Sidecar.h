#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "KvxFrame/Finish.h"
#include "KvxFrame/Format.h"
#include "tools/files/Bytes.h"

namespace kvx::tool {

/** The content of a JSON file next to a frame; every member may be missing. */
struct Sidecar {
    std::string path;                             ///< empty: there is no sidecar
    std::optional<frame::Format> format;          ///< "format", or "bayer_pattern" ("RGGB") and "bits_per_sample"
    std::optional<uint64_t> width;                ///< "width": pixels
    std::optional<uint64_t> height;               ///< "height": rows
    std::optional<uint64_t> stride;               ///< "stride": bytes from row to row
    std::optional<uint64_t> offset;               ///< "offset": bytes before the first row
    std::optional<frame::Levels> blackLevel;      ///< "black_level": a sample value, or four as frame::Levels has them
    std::optional<frame::Levels> whiteLevel;      ///< "white_level": likewise
    std::optional<frame::Gains> gains;            ///< "white_balance_gains": {"R": ..., "G": ..., "B": ...}
    std::optional<std::array<double, 9>> matrix;  ///< "colour_matrix": nine numbers, row by row
    std::optional<uint64_t> orientation;          ///< "orientation": how to turn the picture, 1 to 8 as Exif has it
    std::string warning = {};                     ///< a message about unknown keys; often empty
};

/** "FRAME.json", the name that is written. Reading also finds the frame's name with its extension replaced. */
std::string SidecarPath(const std::string& framePath);

/** Reads the sidecar of a frame; "-" has none. Throws ExitCode::Input, naming file and key, for a broken one. */
Sidecar ReadSidecar(const std::string& framePath);

/** Parses the content of the sidecar `path`. Throws as above. */
Sidecar ParseSidecar(const std::string& path, const Bytes& content);

/** The text of a sidecar with all known members, without `path` and `warning`. */
Bytes SidecarContent(const Sidecar& sidecar);

/** Writes all known members except `path` next to a frame; nothing for "-". Throws ExitCode::Output. */
void WriteSidecar(const std::string& framePath, const Sidecar& sidecar);

}  // namespace kvx::tool
