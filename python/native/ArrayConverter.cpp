#include "python/native/ArrayConverter.h"

#include <utility>

namespace kvx::python {
namespace py = pybind11;
using frame::Converter;

py::object ArrayConverter::Convert(const py::object& source, const frame::Format& format, const frame::Format& to,
                                   const py::object& out, std::optional<uint32_t> width,
                                   std::optional<uint32_t> height) {
    const frame::SourceView sourceView = SourceOf(source, format, {width, height});
    Validate(sourceView);
    py::object picture = out.is_none() ? NewPicture(to, sourceView.width, sourceView.height) : out;
    const frame::DestinationView destinationView = PictureDestinationOf(picture, to);
    Locked([&](Converter& converter) { converter.Convert(sourceView, destinationView); });
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

void ArrayConverter::SetFinish(std::optional<frame::Finish> finish) {
    Locked([&](Converter& converter) { converter.SetFinish(std::move(finish)); });
}

void ArrayConverter::SetAnalogGain(std::optional<double> gain) {
    Locked([=](Converter& converter) { gain ? converter.SetAnalogGain(*gain) : converter.SetNoise(std::nullopt); });
}

void ArrayConverter::SetCamera(const std::optional<std::string>& path, bool findsDefects) {
    Locked([&](Converter& converter) {
        converter.SetCamera(path ? std::make_shared<frame::CameraProfile>(frame::ReadCameraProfile(*path)) : nullptr);
        converter.SetDefects(findsDefects ? frame::Defects::Auto : frame::Defects::Listed);
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
