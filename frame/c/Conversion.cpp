// Converters for C: algorithm, parameters, camera, conversion.
#include <memory>

#include "frame/c/ConverterRecord.h"
#include "frame/c/Records.h"

namespace frame = kvx::frame;
using frame::Fail;
using frame::c::ChoiceOf;
using frame::c::CopyText;
using frame::c::Guarded;
using frame::c::Required;
using frame::c::ViewOf;

namespace {

static_assert(frame::Defects{KvxFrameDefects_Listed} == frame::Defects::Listed &&
              frame::Defects{KvxFrameDefects_Auto} == frame::Defects::Auto);

frame::NoiseLine LineOf(const double* numbers, const char* name) {
    Required(numbers, name);
    return {numbers[0], numbers[1]};
}

}  // namespace

const char* KvxFrame_AlgorithmName(uint32_t family, uint32_t index) noexcept {
    const char* name = nullptr;
    Guarded([&] {
        const auto& algorithms = frame::AlgorithmsOf(ChoiceOf(family, frame::Family::Colour, "family"));
        if (index < algorithms.size()) name = algorithms[index].name;
    });
    return name;
}

uint32_t KvxFrameConverter_Create(uint32_t family, KvxFrameConverter** converter) noexcept {
    return Guarded([&] {
        Required(converter, "converter") = nullptr;
        *converter = std::make_unique<KvxFrameConverter>(ChoiceOf(family, frame::Family::Colour, "family")).release();
    });
}

void KvxFrameConverter_Delete(KvxFrameConverter* converter) noexcept {
    delete converter;
}

const char* KvxFrameConverter_LastError(const KvxFrameConverter* converter) noexcept {
    return converter ? converter->error.Text() : KvxFrame_LastError();
}

uint32_t KvxFrameConverter_SetAlgorithm(KvxFrameConverter* converter, const char* nameOrNumber) noexcept {
    return Guarded(converter,
                   [&](auto& object) { object.converter.SetAlgorithm(&Required(nameOrNumber, "nameOrNumber")); });
}
uint32_t KvxFrameConverter_GetAlgorithm(KvxFrameConverter* converter, char* buffer, uint32_t* size) noexcept {
    return Guarded(converter, [&](auto& object) { CopyText(object.converter.AlgorithmName(), buffer, size); });
}

uint32_t KvxFrameConverter_SetParameter(KvxFrameConverter* converter, const char* name, const char* value) noexcept {
    return Guarded(converter, [&](auto& object) {
        object.converter.SetParameter(&Required(name, "name"), &Required(value, "value"));
    });
}
uint32_t KvxFrameConverter_GetParameter(KvxFrameConverter* converter, const char* name, char* buffer,
                                        uint32_t* size) noexcept {
    return Guarded(converter,
                   [&](auto& object) { CopyText(object.converter.Parameter(&Required(name, "name")), buffer, size); });
}
uint32_t KvxFrameConverter_ParameterAt(KvxFrameConverter* converter, uint32_t index, _KvxStParam* parameter) noexcept {
    return Guarded(converter, [&](auto& object) {
        const std::vector<_KvxStParam> all = object.converter.Parameters();
        if (index >= all.size()) Fail(KvxResult_UnknownName, "parameter {}: there are {}", index, all.size());
        Required(parameter, "parameter") = all[index];
    });
}

uint32_t KvxFrameConverter_SetThreads(KvxFrameConverter* converter, int count) noexcept {
    return Guarded(converter, [&](auto& object) { object.converter.SetThreads(count); });
}

uint32_t KvxFrameConverter_SetAnalogGain(KvxFrameConverter* converter, double gain) noexcept {
    return Guarded(converter, [&](auto& object) { object.converter.SetAnalogGain(gain); });
}
uint32_t KvxFrameConverter_SetNoise(KvxFrameConverter* converter, const double pan[2],
                                    const double colour[2]) noexcept {
    return Guarded(converter, [&](auto& object) {
        std::optional<frame::SensorNoise> noise;
        if (pan || colour) noise = {LineOf(pan, "pan"), LineOf(colour, "colour")};
        object.converter.SetNoise(noise);
    });
}

uint32_t KvxFrameConverter_SetCamera(KvxFrameConverter* converter, const char* path, uint32_t column,
                                     uint32_t row) noexcept {
    return Guarded(converter, [&](auto& object) {
        std::shared_ptr<const frame::CameraProfile> camera;
        if (path) camera = std::make_shared<frame::CameraProfile>(frame::ReadCameraProfile(path));
        const bool isRegion = column > 0 || row > 0;
        object.converter.SetCamera(camera, isRegion ? std::optional(frame::Site{column, row}) : std::nullopt);
        object.camera = camera;
    });
}
const char* KvxFrameConverter_CameraWarning(const KvxFrameConverter* converter, uint32_t index) noexcept {
    const bool isThere = converter && converter->camera && index < converter->camera->warnings.size();
    return isThere ? converter->camera->warnings[index].c_str() : nullptr;
}
uint32_t KvxFrameConverter_SetDefects(KvxFrameConverter* converter, uint32_t defects) noexcept {
    return Guarded(converter, [&](auto& object) {
        object.converter.SetDefects(ChoiceOf(defects, frame::Defects::Auto, "defects"));
    });
}

uint32_t KvxFrameConverter_Convert(KvxFrameConverter* converter, const KvxFrameSource* source,
                                   const KvxFrameDestination* destination) noexcept {
    return Guarded(converter, [&](auto& object) {
        const frame::SourceView from = ViewOf(source);
        object.converter.Convert(from, ViewOf(destination));
    });
}

uint32_t KvxFrameConverter_LastReading(KvxFrameConverter* converter, double gains[4], double* exposure) noexcept {
    return Guarded(converter, [&](auto& object) {
        const frame::Gains last = object.converter.LastGains();
        const double values[] = {last.red, last.green, last.blue, last.pan};
        if (gains) std::copy(std::begin(values), std::end(values), gains);
        if (exposure) *exposure = object.converter.LastExposure();
    });
}

uint32_t KvxFrameConverter_Release(KvxFrameConverter* converter) noexcept {
    return Guarded(converter, [](auto& object) { object.converter.Release(); });
}
