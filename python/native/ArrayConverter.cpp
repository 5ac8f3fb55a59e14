#include "python/native/ArrayConverter.h"

#include <utility>

#include "KvxFrame/SampleDepth.h"

namespace kvx::python {
namespace py = pybind11;
using frame::Converter;

py::object ArrayConverter::Convert(const py::object& source, const frame::Format& format, const frame::Format& to,
                                   const py::object& out, std::optional<uint32_t> width, std::optional<uint32_t> height,
                                   bool checksDepth) {
    const frame::SourceView sourceView = SourceOf(source, format, {width, height});
    Validate(sourceView);
    py::object picture = out.is_none() ? NewPicture(to, sourceView.width, sourceView.height) : out;
    const frame::DestinationView destinationView = PictureDestinationOf(picture, to);
    Locked([&](Converter& converter) {
        if (checksDepth) CheckSampleDepth(sourceView);
        converter.Convert(sourceView, destinationView);
    });
    return picture;
}

void ArrayConverter::SetAlgorithm(const std::string& nameOrNumber) {
    Locked([&](Converter& converter) { converter.SetAlgorithm(nameOrNumber); });
}

std::string ArrayConverter::AlgorithmName() {
    return Locked([](const Converter& converter) { return converter.AlgorithmName(); });
}

void ArrayConverter::SetThreads(int count) {
    Locked([=](Converter& converter) { converter.SetThreads(count); });
}

void ArrayConverter::SetParameter(const std::string& name, const std::string& value) {
    Locked([&](Converter& converter) { converter.SetParameter(name, value); });
}

std::string ArrayConverter::Parameter(const std::string& name) {
    return Locked([&](const Converter& converter) { return converter.Parameter(name); });
}

std::vector<_KvxStParam> ArrayConverter::Parameters() {
    return Locked([](const Converter& converter) { return converter.Parameters(); });
}

void ArrayConverter::SetFinish(const std::optional<GivenFinish>& finish) {
    Locked([&](Converter& converter) {
        finish ? converter.SetFinish(finish->finish, finish->given) : converter.SetFinish(std::nullopt);
    });
}

void ArrayConverter::SetAnalogGain(std::optional<double> gain) {
    Locked([=](Converter& converter) { gain ? converter.SetAnalogGain(*gain) : converter.SetNoise(std::nullopt); });
}

std::vector<std::string> ArrayConverter::SetCamera(const std::optional<std::string>& path, bool findsDefects) {
    return Locked([&](Converter& converter) {
        std::shared_ptr<const frame::CameraProfile> profile;
        if (path) profile = std::make_shared<frame::CameraProfile>(frame::ReadCameraProfile(*path));
        converter.SetCamera(profile);
        converter.SetDefects(findsDefects ? frame::Defects::Auto : frame::Defects::Listed);
        return profile ? profile->warnings : std::vector<std::string>();
    });
}

std::array<double, 4> ArrayConverter::LastGains() {
    const frame::Gains gains = Locked([](const Converter& converter) { return converter.LastGains(); });
    return {gains.red, gains.green, gains.blue, gains.pan};
}

double ArrayConverter::LastExposure() {
    return Locked([](const Converter& converter) { return converter.LastExposure(); });
}

void ArrayConverter::Release() {
    Locked([](Converter& converter) { converter.Release(); });
}

}  // namespace kvx::python
