#pragma once

#include <optional>
#include <string>

#include "tools/files/Bytes.h"
#include "tools/files/Picture.h"

namespace kvx::tool {

/** Header of a PGM or PPM file, plain (P2, P3) or binary (P5, P6). */
struct PnmHeader {
    int channels;        ///< 1 or 3
    bool isPlain;        ///< samples are decimal text
    uint64_t width;      ///< pixels
    uint64_t height;     ///< rows
    uint32_t maximum;    ///< white, 1 to 65535; above 255 a binary sample is a big-endian word
    size_t headerBytes;  ///< where the samples start
};

/** The header, or nothing when the content is no PGM or PPM file. */
std::optional<PnmHeader> ParsePnmHeader(const Bytes& content);

/** The picture with its samples as stored. Throws ExitCode::Input or ExitCode::Frame; `name` is for messages. */
Picture DecodePnm(const Bytes& content, const PnmHeader& header, const std::string& name);

/** Binary PGM or PPM, by the number of channels: at once, or in pieces of a megabyte. */
Bytes EncodePnm(const Picture& picture);
void EncodePnm(const Picture& picture, const ContentSink& sink);

}  // namespace kvx::tool
