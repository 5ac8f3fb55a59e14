/** The values of the properties, and their meaning for the frame layer. */
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "KvxFrame/Converter.h"

namespace kvx::gst {

/** Empty texts stand for the defaults. */
struct Settings {
    std::string algorithm;
    uint32_t threads = 0;
    bool isNatural = false;        ///< the natural look for what other settings leave open
    std::string whiteBalance;      ///< "auto", "white-patch", "grey-world", or three gains
    std::string whiteBalanceFrom;  ///< a grey place of the frames instead: X,Y,W,H
    std::string exposure;          ///< "auto", or a number in EV
    std::string blackLevel;        ///< a number, or four
    std::string whiteLevel;        ///< likewise
    double analogGain = 0;         ///< of the frames, for the removal of their noise; 0: none is removed
    std::string camera;            ///< path of the camera's profile
    frame::Defects defects = frame::Defects::Listed;
    std::string matrix;
    std::optional<frame::ToneCurve> tone;
    std::map<std::string, std::string> parameters;  ///< parameters of the component, by name
    std::optional<frame::Layout> packing;           ///< replaces the layout of the format's name
    int32_t stride = 0;                             ///< bytes; 0: derived from the buffer

    bool operator==(const Settings&) const = default;
};

/** The format of the frames. @throws frame::Error if the depth does not have this packing */
frame::Format PackedFormat(const Settings& settings, frame::Format named);

/** The finish; std::nullopt if no property concerns it. @throws frame::Error for invalid texts */
std::optional<frame::Finish> FinishOf(const Settings& settings);

/** The parts of the finish that properties give. */
frame::GivenParts GivenPartsOf(const Settings& settings);

/** The place whose gains the white balance takes; std::nullopt: none. @throws frame::Error for an invalid text */
std::optional<_KvxRect> GreyPlaceOf(const Settings& settings);

/** The profile of the camera, or null. @throws frame::Error */
std::shared_ptr<const frame::CameraProfile> CameraOf(const Settings& settings);

/** A converter with the algorithm, the parameters, the analog gain and the camera. @throws frame::Error */
frame::Converter MakeConverter(const Settings& settings, frame::Family family,
                               std::shared_ptr<const frame::CameraProfile> camera);

}  // namespace kvx::gst
