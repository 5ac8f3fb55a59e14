/**
 * @file
 * Converts camera frames to pictures: any source format to any destination format.
 *
 * Rules for all formats:
 * - Full range: white of the source (2^bits - 1) becomes white of the destination, and black 0 stays 0. 8-bit results
 * of deeper sources are the upper 8 bits; between other depths v becomes v * (2^n - 1) / (2^m - 1), rounded half up.
 * - The fourth sample of a pixel is the largest value of its depth: opaque.
 * - Only pixels are written: padding and all other bytes keep their content. A call that throws writes nothing.
 * - The picture is the same for any number of threads and on any instruction set. OpenMP's settings do not change.
 * - A TrueSense frame without a Finish gets the colour matrix and the tone curve of the component's parameters; "fine"
 *   and "swift" apply them as a Finish with this matrix and this curve.
 * - The TrueSense parameter "impulseFilterEnable" starts as 1, as in TrueSense_DefaultValues().
 */
#ifndef KVXFRAME_CONVERTER_H
#define KVXFRAME_CONVERTER_H

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "KvxDemosaicing/KvxComponent.h"
#include "KvxFrame/CameraProfile.h"
#include "KvxFrame/Finish.h"
#include "KvxFrame/SensorNoise.h"
#include "KvxFrame/View.h"

namespace kvx::frame {

/** The number of an algorithm that the components do not have. */
inline constexpr int64_t kOfFrameLayer = -1;

/** The largest number of threads that a caller of this library can ask for. */
inline constexpr int kMaxThreads = 1024;

/**
 * A demosaicing algorithm of a family.
 *
 * "fine" and "swift", for Bayer and TrueSense, belong to this layer: a small neural network for the best pictures, and
 * two learned linear filters for frame rate, both in exact whole numbers. They expect balanced samples: give raw
 * colours a Finish with their gains. With SetNoise() "fine" removes noise.
 */
struct Algorithm {
    const char* name;  ///< such as "edge-aware"
    int64_t number;    ///< its value of the component's parameter, or kOfFrameLayer
};

/** The algorithms of a family, the default first; none for Mono and Colour. The reference stays valid. */
KVX_API const std::vector<Algorithm>& AlgorithmsOf(Family family);

/**
 * What a parameter of a family's component does: a sentence without capital and full stop, "" for an unknown name. The
 * text stays valid. Any thread.
 */
KVX_API const char* ParameterText(Family family, std::string_view name);

class ConverterImpl;

/** Converts frames of one family. Used by one thread at a time; converters share no state. */
class KVX_API Converter {
public:
    /** @throws Error 0x80070007 for Family::Colour */
    explicit Converter(Family family);
    /** After a move the source can only be assigned to or destroyed. */
    Converter(Converter&&) noexcept;
    /** As above. */
    Converter& operator=(Converter&&) noexcept;
    /** Frees all memory. */
    ~Converter();

    /** The family that it was created for. */
    Family SourceFamily() const noexcept;

    /**
     * Selects an algorithm by its name or by a number in the range of the component's parameter: "edge-aware", "2".
     * @throws Error 0x80070002 for an unknown algorithm; what() lists the known ones
     */
    void SetAlgorithm(std::string_view nameOrNumber);
    /** Name of the selected algorithm, or its number if it has no name; "" for mono. */
    std::string AlgorithmName() const;

    /**
     * Sets a parameter of the component by name, from text as for KvxComponent::SetParamAsString().
     * @throws Error with the component's result: unknown name (what() suggests similar ones), wrong type, out of range;
     *         0x80070002 for mono, which has no parameters
     */
    void SetParameter(const std::string& name, const std::string& value);
    /** The value of a parameter as text. @throws Error 0x80000002 for an unknown name, 0x80070002 for mono */
    std::string Parameter(const std::string& name) const;
    /** All parameters in the component's order; none for mono. ParameterText() says what they do. */
    std::vector<_KvxStParam> Parameters() const;

    /**
     * Sets the number of threads of a conversion, at most; small frames take fewer.
     * @param count 1 to kMaxThreads; 0, the default: OpenMP's setting
     * @throws Error 0x80070004 for another count
     */
    void SetThreads(int count);

    /**
     * Sets the noise of the frames, which the algorithm "fine" and the noise-reducing TrueSense algorithms then remove;
     * other algorithms ignore it.
     *
     * Bayer frames have the noise of `colour`; "fine" judges TrueSense frames by their clear sites, the noise of `pan`.
     * The signal counts from the finish's black level, and the noise grows with the gains of the finish.
     * @param noise std::nullopt, the default: "fine" keeps every sample, the others take their parameters
     * @throws Error 0x80070004 for a value that is not finite
     */
    void SetNoise(const std::optional<SensorNoise>& noise);

    /**
     * SetNoise() with the noise model of an analog gain: that of the component's parameters for TrueSense, whose
     * parameter "analogGain" is set, too; the built-in one for other frames. See NoiseAt().
     * @throws Error 0x80070004 for a negative gain or NaN
     */
    void SetAnalogGain(double gain);

    /**
     * Sets the processing of the values.
     *
     * @param finish std::nullopt, the default: none
     * @param given  parts that the camera's profile does not replace although they are neutral
     * @throws Error 0x80070004 for a value out of range
     */
    void SetFinish(std::optional<Finish> finish, GivenParts given = {});

    /**
     * Sets the camera that took the frames. Fixed pattern and shading are corrected row by row in front of the
     * interpolation; defective pixels need a working mosaic of the whole frame. Balance and exposure are measured
     * before. The noise of the profile is that of SetNoise(), which overrides it. Frames may have another depth than
     * the profile's.
     *
     * @param profile shared, so that converters need no copies; null, the default: none
     * @param origin  place of the frames in the profile's frames, if they are regions of them
     * @throws Error what Validate() throws. Convert() throws 0x80070007 for frames that the profile does not fit
     */
    void SetCamera(std::shared_ptr<const CameraProfile> profile, std::optional<Site> origin = std::nullopt);

    /** Sets which samples are replaced as defective. Without a noise model Defects::Auto measures noise in each frame.
     */
    void SetDefects(Defects defects);

    /**
     * Converts one frame, in working memory of a few megabytes for each thread; only the noise-reducing TrueSense
     * algorithms, camera profiles and Defects::Auto keep planes of the whole frame. After the first frame of a size and
     * format it allocates nothing.
     *
     * @param source      a frame of this converter's family, in any layout
     * @param destination a picture of the same size, in any colour format; must not overlap the source
     * @throws Error what Validate() throws; 0x80070007 for another family, different sizes, overlapping buffers, or a
     *         black level that is not below white; the component's result if the component fails
     */
    void Convert(const SourceView& source, const DestinationView& destination);

    /** The gains applied to the last frame: measured times given ones. 1 before the first frame and without a finish.
     */
    Gains LastGains() const noexcept;
    /** Whether WhiteBalance::Auto had to limit the gains of the last frame to those of a plausible light. */
    bool LastGainsLimited() const noexcept;
    /** The exposure applied to the last frame in EV: measured plus given; 0 as above. */
    double LastExposure() const noexcept;

    /** Frees the working memory; settings stay. */
    void Release() noexcept;

private:
    std::unique_ptr<ConverterImpl> m_impl;
};

/** Settings of one conversion; empty members stand for the defaults. */
struct Options {
    std::string algorithm;                                        ///< see Converter::SetAlgorithm()
    std::vector<std::pair<std::string, std::string>> parameters;  ///< names and values
    int threads = 0;                                              ///< see Converter::SetThreads()
    std::optional<Finish> finish;                                 ///< see Converter::SetFinish()
    std::optional<double> analogGain = {};                        ///< see Converter::SetAnalogGain()
    std::optional<SensorNoise> noise = {};                        ///< see Converter::SetNoise(); instead of analogGain
    std::shared_ptr<const CameraProfile> camera = {};             ///< see Converter::SetCamera()
    Defects defects = Defects::Listed;                            ///< see Converter::SetDefects()
    GivenParts given = {};                                        ///< see Converter::SetFinish()
};

/** Converts one frame. A Converter is faster for many frames: it keeps its memory. @throws Error as the Converter */
KVX_API void Convert(const SourceView& source, const DestinationView& destination, const Options& options = {});

}  // namespace kvx::frame

#endif
