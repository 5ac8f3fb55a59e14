/** Converts an image to a sensor frame, with or without noise, and restores the image. */
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
    int number;                            ///< of KvxBayerAlgorithm or KvxTrueSenseAlgorithm
    const char* frameAlgorithm = nullptr;  ///< name of an algorithm of the frame layer instead
    const peers::Peer* peer = nullptr;     ///< algorithm of another library instead
};

/** All algorithms of this library, and Bayer algorithms of other libraries. */
std::span<const Algorithm> AllAlgorithms();

/** The algorithm with this name. Throws std::invalid_argument. */
const Algorithm& AlgorithmByName(const std::string& name);

/** The analog gain of the noise in the frames; no value: no noise. */
using Gain = std::optional<double>;

/** The conversion between the two images. */
struct Setting {
    Algorithm algorithm;
    Gain analogGain = {};
    uint64_t seed = 1;  ///< of the noise
    bool isRendered =
        false;  ///< the frame has the linear light of the sRGB image, and the tone curve restores the encoding
    tagTrueSenseParam params;  ///< of TrueSense algorithms; `analogGain` is set from above

    Setting At(Gain gain) const;
};

/** How the pipeline adds the detail of pan. */
enum class Sharpness { Off, Plain, Full };  ///< not at all; unchanged; with the default sharpening

/**
 * Parameters that give every algorithm the same task: the defaults without a colour matrix, with plain detail and
 * LinearTone().
 */
tagTrueSenseParam PlainParams();

void SetSharpness(tagTrueSenseParam& params, Sharpness sharpness);

/** A tone table that maps each 12-bit value to the nearest 8-bit value, for frames of encoded images. */
const uint16_t* LinearTone();

/** The sRGB curve, for frames of linear light. */
const uint16_t* SrgbTone();

/** Switches all passes of the noise filter off. */
void SwitchFilterOff(tagTrueSenseParam& params);

/** Sets a field from "name=value". Throws std::invalid_argument for an unknown name or a malformed number. */
void SetParam(tagTrueSenseParam& params, const std::string& assignment);

/**
 * Samples an image to a frame and converts the frame to 8 bits. The frame is 8-bit RGGB for Bayer algorithms, and
 * 12-bit TrueSense for the others, with the mean of red, green and blue at clear sites.
 *
 * @return 8 bits; blue, green, red
 * @throws std::runtime_error if a library refuses the conversion
 */
cv::Mat Restored(const Picture& picture, const Setting& setting);

}  // namespace kvx::quality
