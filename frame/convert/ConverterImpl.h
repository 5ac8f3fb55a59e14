/** The steps of a conversion: rows of the mosaic, interpolation, last step. */
#pragma once

#include "frame/camera/MosaicCorrection.h"
#include "frame/convert/Component.h"
#include "frame/convert/PictureSink.h"
#include "frame/finish/LightMeter.h"
#include "frame/finish/ToneTable.h"
#include "frame/learned/LearnedInterpolator.h"

namespace kvx::frame {

/** Checks a finish without a frame. @throws Error 0x80070004 */
void Validate(const Finish& finish);

/** Checks a noise model. @throws Error 0x80070004 */
void Validate(const SensorNoise& noise);

class ConverterImpl {
public:
    explicit ConverterImpl(Family family);

    void SetAlgorithm(std::string_view nameOrNumber);
    std::string AlgorithmName() const;
    void Convert(const SourceView& given, const DestinationView& destination);
    void Release() noexcept;

    Family family;
    std::unique_ptr<Component> component;  // none for mono
    void SetFinish(std::optional<Finish> finish, GivenParts given);
    void SetCamera(std::shared_ptr<const CameraProfile> profile, std::optional<Site> origin);

    MosaicCorrection correction;
    std::optional<SensorNoise> noise;
    bool noiseIsOfGain = false;  // and the component's parameters know that gain
    int threads = 0;
    ToneTable tone;
    Reading lastReading;

private:
    void Check(const SourceView& source, const DestinationView& destination) const;
    SourceView WithMirrorParameters(SourceView source) const;
    const Finish* FinishOf(const SourceView& source);
    Route RouteFor(const Format& source, uint8_t bits, bool isFinished) const;
    bool ConvertsDirectly(const SourceView& source, const DestinationView& destination, const Route& route) const;
    void ConvertDirectly(const SourceView& source, const DestinationView& destination);
    void ConvertRows(const SourceView& source, const Route& route, const Finish* values, const Gains& gains,
                     const PictureSink& sink);
    const std::optional<SensorNoise>& FrameNoise() const;
    const SensorNoise* ComponentNoise(const std::optional<SensorNoise>& measured) const;
    void Require(uint32_t result, const SourceView& source, const Format& destination) const;
    const uint16_t* TableFor(const Finish* values, const Route& route, uint8_t bits);

    std::optional<Finish> m_givenFinish;
    std::optional<Finish> m_finish;  // with what the camera gives
    GivenParts m_givenParts;
    std::shared_ptr<const CameraProfile> m_camera;   // or null
    std::unique_ptr<LearnedInterpolator> m_learned;  // null: the component's algorithm
    Finish m_parameterFinish;                        // of the component's parameters
    LightMeter m_meter;
};

}  // namespace kvx::frame
