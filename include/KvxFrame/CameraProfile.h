/**
 * @file
 * Camera profiles: what was measured of a camera once and holds for all its frames: levels, white balance, colour
 * matrix, noise, defective pixels, shading, fixed pattern.
 *
 * A profile is a JSON file, `{"kvx_camera_profile": 1, "format": "BayerRG12", ...}`, with the keys of a frame's sidecar
 * where they mean the same (docs/calibration.md). `kvx-demosaic calibrate` measures profiles.
 */
#ifndef KVXFRAME_CAMERAPROFILE_H
#define KVXFRAME_CAMERAPROFILE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "KvxFrame/Finish.h"
#include "KvxFrame/Format.h"
#include "KvxFrame/SensorNoise.h"

namespace kvx::frame {

/** A site of a frame. */
struct Site {
    uint32_t column = 0;  ///< from the left, from 0
    uint32_t row = 0;     ///< from the top, from 0
};
/** Compares both members. */
constexpr bool operator==(const Site& a, const Site& b) noexcept {
    return a.column == b.column && a.row == b.row;
}

/**
 * Gains that make a uniformly lit frame uniform: a coarse grid over the frame, whose first and last nodes lie on the
 * first and last pixels, interpolated bilinearly.
 */
struct Shading {
    uint32_t columns = 0;  ///< nodes in a row, 2 to 1024; 0: no correction of shading
    uint32_t rows = 0;     ///< rows of nodes, likewise
    /** Gains of a filter colour, row by row, in the order of Levels: from 1, so that white stays white, up to 7.99.
     */
    std::array<std::vector<float>, 4> gains;
};

/** Which samples are replaced as defective. */
enum class Defects : uint8_t {
    Listed,  ///< those of the camera profile
    Auto     ///< also outliers: samples that differ from all neighbours of their filter by more than the noise
};

/** What was measured of a camera. Every member may be missing. Coordinates are those of stored frames. */
struct CameraProfile {
    std::string camera;                ///< "camera": a name for people
    std::optional<Format> format;      ///< "format" of the measured frames, whose layout does not matter
    uint32_t width = 0;                ///< "width" of the measured frames
    uint32_t height = 0;               ///< "height" of the measured frames
    std::optional<Levels> blackLevel;  ///< "black_level", a number or four: sample values, fractions allowed
    std::optional<Levels> whiteLevel;  ///< "white_level", a number or four: at which the sensor clips
    std::optional<Gains> gains;  ///< "white_balance_gains": {"R", "G", "B"}, and "W" for clear sites, else green's
    std::optional<std::array<double, 9>> matrix;  ///< "colour_matrix", as in Finish
    std::optional<SensorNoise> noise;  ///< "noise": {"slope", "intercept"}, or one of each for "pan" and "colour"
    std::vector<Site> hotPixels;       ///< "hot_pixels", [[column, row], ...]: too bright in the dark
    std::vector<Site> deadPixels;      ///< "dead_pixels", likewise: too dark or too bright in light
    Shading shading;                   ///< "shading": {"columns", "rows", "gains": {"R": [...], ...}}
    /**
     * "dark_frame", a grey 16-bit PNG file in the folder of the profile: what the sensor gives in the dark, black level
     * included, row by row, samples shifted left to 16 bits. Empty: no fixed pattern.
     */
    std::vector<uint16_t> darkFrame;
    std::string otherKeys;              ///< unknown keys of the file, as a JSON object, which writing keeps
    std::vector<std::string> warnings;  ///< sentences about the file, such as unknown keys with the nearest known one
};

/**
 * Checks values and whether they fit each other. Shading, defective pixels and a dark frame need format, width and
 * height; a dark frame also needs the black level.
 *
 * @throws Error 0x80070004 for a value out of range, 0x80070007 for members that do not fit each other
 */
KVX_API void Validate(const CameraProfile& profile);

/**
 * Checks that a profile is for frames of this family, these filters and this size. The depth may be another one.
 *
 * @param frame  a valid view
 * @param origin as in Converter::SetCamera(): the place of a region; std::nullopt: a whole frame
 * @throws Error 0x80070007 if it is for others
 */
KVX_API void RequireFit(const CameraProfile& profile, const SourceView& frame,
                        const std::optional<Site>& origin = std::nullopt);

/**
 * The finish of a camera's frames: where `finish` says nothing (a level of 0, gains of 1 that are not measured, the
 * identity as matrix) what the profile has, except for given parts. Levels are scaled to the depth of the frames.
 */
KVX_API Finish FinishWith(const CameraProfile& profile, const Finish& finish, const Format& frames,
                          GivenParts given = {});

/**
 * The light of a frame as the profile corrects it: black level, fixed pattern, shading and listed defective pixels, but
 * no white balance. For measurements; a Converter does the same on its own.
 *
 * @param frame  a frame that the profile fits, as in Converter::SetCamera()
 * @param finish only its levels count; where they are 0, those of the profile
 * @return width x height samples of 16 bits in rows without padding: black is 0, white 65535
 * @throws Error 0x80070008 or 0x80070007 for an invalid view, and a profile or levels that do not fit the frame
 */
KVX_API std::vector<uint16_t> CorrectedMosaic(const SourceView& frame, const CameraProfile& profile,
                                              const Finish& finish = {});

/**
 * Reads a profile, and the dark frame next to it.
 * @throws Error 0x80070007 if a file cannot be read, or is not what it should be (what() names the key), and what
 *         Validate() throws
 */
KVX_API CameraProfile ReadCameraProfile(const std::string& path);

/** The same from the text of a profile that names no dark frame. @param name for messages */
KVX_API CameraProfile ParseCameraProfile(std::string_view json, const std::string& name = "profile");

/** The file of a profile's dark frame: STEM-dark.png next to STEM.json. */
KVX_API std::string DarkFramePath(const std::string& profilePath);

/**
 * Writes a profile, and its dark frame to DarkFramePath(). Files are replaced when they are complete.
 * @throws Error what Validate() throws; 0x80070001 if a file cannot be written
 */
KVX_API void WriteCameraProfile(const CameraProfile& profile, const std::string& path);

}  // namespace kvx::frame

#endif
