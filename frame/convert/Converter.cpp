#include "KvxFrame/Converter.h"

#include "frame/base/Fail.h"
#include "frame/convert/Component.h"
#include "frame/convert/ConverterImpl.h"
#include "frame/view/Checks.h"

namespace kvx::frame {
Converter::Converter(Family family) : m_impl(std::make_unique<ConverterImpl>(family)) {}
Converter::Converter(Converter&&) noexcept = default;
Converter& Converter::operator=(Converter&&) noexcept = default;
Converter::~Converter() = default;

Family Converter::SourceFamily() const noexcept {
    return m_impl->family;
}

void Converter::SetAlgorithm(std::string_view nameOrNumber) {
    if (!m_impl->component) Fail(KvxResult_UnknownName, "mono frames have no algorithms: leave out '{}'", nameOrNumber);
    m_impl->SetAlgorithm(nameOrNumber);
}

std::string Converter::AlgorithmName() const {
    return m_impl->AlgorithmName();
}

void Converter::SetParameter(const std::string& name, const std::string& value) {
    if (!m_impl->component) Fail(KvxResult_UnknownName, "mono frames have no parameters: leave out {}", name);
    m_impl->component->SetParameter(name, value);
}

std::string Converter::Parameter(const std::string& name) const {
    if (!m_impl->component) Fail(KvxResult_UnknownName, "mono frames have no parameters: leave out {}", name);
    return m_impl->component->Parameter(name);
}

std::vector<_KvxStParam> Converter::Parameters() const {
    return m_impl->component ? m_impl->component->Parameters() : std::vector<_KvxStParam>();
}

void Converter::SetThreads(int count) {
    CheckThreads(count);
    m_impl->threads = count;
}

void Converter::SetNoise(const std::optional<SensorNoise>& noise) {
    if (noise) Validate(*noise);
    m_impl->noise = noise;
    m_impl->noiseIsOfGain = false;
}

void Converter::SetAnalogGain(double gain) {
    SetNoise(m_impl->component ? m_impl->component->SetAnalogGain(gain) : NoiseAt(gain));
    m_impl->noiseIsOfGain = true;
}

void Converter::SetFinish(std::optional<Finish> finish, GivenParts given) {
    if (finish) Validate(*finish);
    m_impl->SetFinish(std::move(finish), given);
}

void Converter::SetCamera(std::shared_ptr<const CameraProfile> profile, std::optional<Site> origin) {
    if (profile) Validate(*profile);
    m_impl->SetCamera(std::move(profile), origin);
}

void Converter::SetDefects(Defects defects) {
    m_impl->correction.SetDefects(defects);
}

void Converter::Convert(const SourceView& source, const DestinationView& destination) {
    m_impl->Convert(source, destination);
}

Gains Converter::LastGains() const noexcept {
    return m_impl->lastReading.balance.gains;
}

bool Converter::LastGainsLimited() const noexcept {
    return m_impl->lastReading.balance.isLimited;
}

double Converter::LastExposure() const noexcept {
    return m_impl->lastReading.exposure;
}

void Converter::Release() noexcept {
    m_impl->Release();
}

void Convert(const SourceView& source, const DestinationView& destination, const Options& options) {
    Validate(source);
    Converter converter(source.format.family);
    for (const auto& [name, value] : options.parameters) converter.SetParameter(name, value);
    if (!options.algorithm.empty()) converter.SetAlgorithm(options.algorithm);
    converter.SetThreads(options.threads);
    converter.SetFinish(options.finish, options.given);
    converter.SetCamera(options.camera);
    converter.SetDefects(options.defects);
    if (options.analogGain) converter.SetAnalogGain(*options.analogGain);
    if (options.noise) converter.SetNoise(options.noise);
    converter.Convert(source, destination);
}

}  // namespace kvx::frame
