/** What the properties ask for, and what it means to the frame layer. */
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "KvxFrame/Converter.h"

namespace kvx::gst {

/** Texts that are empty leave things as they are. */
struct Settings {
    std::string algorithm;
    uint32_t threads = 0;
    std::string whiteBalance;  ///< "auto", "white-patch", "grey-world", or three gains
    uint32_t blackLevel = 0;
    uint32_t whiteLevel = 0;
    std::string matrix;
    std::optional<frame::ToneCurve> tone;
    std::map<std::string, std::string> parameters;  ///< of the component, by name
    std::optional<frame::Layout> packing;           ///< instead of the one that the format's name tells
    int32_t stride = 0;                             ///< bytes; 0: as the buffer tells

    bool operator==(const Settings&) const = default;
};

/** The format of the frames. @throws frame::Error where the packing is none for this depth */
frame::Format PackedFormat(const Settings& settings, frame::Format named);

/** Nothing where no setting is about the values of a frame. @throws frame::Error for texts that cannot be read */
std::optional<frame::Finish> FinishOf(const Settings& settings);

/** A converter with the algorithm and the parameters. @throws frame::Error */
frame::Converter MakeConverter(const Settings& settings, frame::Family family);

}  // namespace kvx::gst
