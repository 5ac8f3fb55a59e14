/** From a picture over a sensor's frame, with or without noise, back to a picture. */
#pragma once

#include <opencv2/core.hpp>
#include <optional>
#include <span>
#include <string>

#include "KvxDemosaicing/KvxTrueSense.h"
#include "peers/Peers.h"
#include "quality/Picture.h"

namespace kvx::quality {

struct Algorithm {
    enum class Family { Bayer, TrueSense };

    const char* name;
    Family family;
    int number;                         ///< of KvxBayerAlgorithm or KvxTrueSenseAlgorithm
    const peers::Peer* peer = nullptr;  ///< another library's
};

/** All that the library has, and other libraries' Bayer algorithms. */
std::span<const Algorithm> AllAlgorithms();

/** The algorithm with this name. Throws std::invalid_argument. */
const Algorithm& AlgorithmByName(const std::string& name);

/** The analog gain whose noise frames carry; none without. */
using Gain = std::optional<double>;

/** What lies between the two pictures. */
struct Setting {
    Algorithm algorithm;
    Gain analogGain = {};
    uint64_t seed = 1;        ///< of the noise
    bool isRendered = false;  ///< the sensor sees the light behind the picture's sRGB encoding, which the tone restores
    tagTrueSenseParam params;  ///< of TrueSense algorithms, with `analogGain` put in

    Setting At(Gain gain) const;
};

/** What the pipeline does with the detail of pan. */
enum class Sharpness { Off, Plain, Full };  ///< nothing; adds it as it is; as the record's defaults have it

/**
 * Parameters under which every algorithm has the same job: the record's defaults, but no colour matrix, plain detail
 * and LinearTone().
 */
tagTrueSenseParam PlainParams();

void SetSharpness(tagTrueSenseParam& params, Sharpness sharpness);

/** A tone table that gives each 12-bit value the nearest 8-bit one: the way back from a picture's frame. */
const uint16_t* LinearTone();

/** The same for frames of linear light: the sRGB curve. */
const uint16_t* SrgbTone();

/** Switches all passes of the noise filter off. */
void SwitchFilterOff(tagTrueSenseParam& params);

/** Sets a field from "name=value". Throws std::invalid_argument for an unknown name or no number. */
void SetParam(tagTrueSenseParam& params, const std::string& assignment);

/**
 * Samples a picture to a frame and converts that to 8 bits: an 8-bit RGGB frame for the Bayer algorithms, a 12-bit
 * frame for the others, whose clear sites take the mean of red, green and blue.
 *
 * @return 8 bits; blue, green, red
 * @throws std::runtime_error when a library refuses
 */
cv::Mat Restored(const Picture& picture, const Setting& setting);

}  // namespace kvx::quality
