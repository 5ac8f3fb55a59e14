#include <algorithm>
#include <array>

#include "KvxFrame/Converter.h"

namespace kvx::frame {
namespace {

struct Meaning {
    std::string_view name;  ///< without the number at its end
    const char* text;
};

constexpr std::array kBayer = {
    Meaning{"BayerAlgType", "algorithm: 0 bilinear, 1 ipp, 2 edge-aware; 3 and 4 convert as 0"},
    Meaning{"NoRealloc", "no effect"},
};

constexpr std::array kTrueSense = {
    Meaning{"TrueSenseAlgType", "algorithm: 0 fast, 1 simple, 2 bayer-like, 3 kodak-like, 4 kodak"},
    Meaning{"NoRealloc", "no effect"},
    Meaning{"threads_num", "threads of a conversion; 0: OpenMP's setting"},
    Meaning{"normalizationEnable", "1: words are written 16 bits deep, whatever the depth of the frame"},
    Meaning{"horMirrored", "1: the sensor was read out from right to left"},
    Meaning{"verMirrored", "1: the sensor was read out from bottom to top"},
    Meaning{"monoEnable", "1: a grey picture, by the noise-reducing algorithms"},
    Meaning{"impulseFilterEnable", "1: clamps outliers among the colour differences (simple, kodak-like)"},
    Meaning{"sharpnessEnable", "1: sharpens edges (kodak-like, kodak); 0: detail stays"},
    Meaning{"darkFloor", "black level on a scale of 12 bits (noise-reducing algorithms)"},
    Meaning{"redGain", "factor of the red samples (noise-reducing algorithms)"},
    Meaning{"greenGain", "factor of the green samples (noise-reducing algorithms)"},
    Meaning{"blueGain", "factor of the blue samples (noise-reducing algorithms)"},
    Meaning{"panGain", "factor of the clear samples (noise-reducing algorithms)"},
    Meaning{"globalGain", "factor of all samples, applied above 1 (noise-reducing algorithms)"},
    Meaning{"analogGain", "gain of the sensor, which selects the noise model (kodak-like, kodak)"},
    Meaning{"ISOAnalogGain_", "noise model: an analog gain at which the noise is known, ascending"},
    Meaning{"ISOPanSlope_", "noise model: variance of clear samples per unit of signal at that gain"},
    Meaning{"ISOPanIntercept_", "noise model: variance of clear samples without light at that gain"},
    Meaning{"ISOColorSlope_", "noise model: variance of colour samples per unit of signal at that gain"},
    Meaning{"ISOColorIntercept_", "noise model: variance of colour samples without light at that gain"},
    Meaning{"panRadius", "radius of this pass of the filter over pan; 0 skips the pass (kodak-like, kodak)"},
    Meaning{"panSigma", "strength of this pass of the filter over pan, in deviations of the noise"},
    Meaning{"colorRadius", "radius of this pass of the filter over colours; 0 skips it (kodak-like, kodak)"},
    Meaning{"colorSigma", "strength of this pass of the filter over colours, in deviations of the noise"},
    Meaning{"RR", "colour matrix: red of the picture from red"},
    Meaning{"RG", "colour matrix: red of the picture from green"},
    Meaning{"RB", "colour matrix: red of the picture from blue"},
    Meaning{"GR", "colour matrix: green of the picture from red"},
    Meaning{"GG", "colour matrix: green of the picture from green"},
    Meaning{"GB", "colour matrix: green of the picture from blue"},
    Meaning{"BR", "colour matrix: blue of the picture from red"},
    Meaning{"BG", "colour matrix: blue of the picture from green"},
    Meaning{"BB", "colour matrix: blue of the picture from blue"},
    Meaning{"sharpenParam", "activity below this is not sharpened (kodak-like, kodak)"},
    Meaning{"maxSharpen", "largest amount of sharpening (kodak-like, kodak)"},
    Meaning{"highLumaNoise", "share of the detail that is added in the brightest places (kodak-like, kodak)"},
    Meaning{"lowLumaNoise", "share of the detail that is added in the darkest places (kodak-like, kodak)"},
};

template <size_t kCount>
const char* Find(const std::array<Meaning, kCount>& meanings, std::string_view name) {
    const std::string_view stem = name.substr(0, name.find_last_not_of("0123456789") + 1);
    const auto found =
        std::find_if(meanings.begin(), meanings.end(), [stem](const Meaning& meaning) { return meaning.name == stem; });
    return found == meanings.end() ? "" : found->text;
}

}  // namespace

const char* ParameterText(Family family, std::string_view name) {
    return family == Family::Bayer ? Find(kBayer, name) : family == Family::TrueSense ? Find(kTrueSense, name) : "";
}

}  // namespace kvx::frame
