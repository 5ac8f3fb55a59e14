#include "frame/convert/Component.h"

#include <fmt/ranges.h>

#include <algorithm>
#include <new>

#include "KvxDemosaicing/KvxBayer.h"
#include "KvxDemosaicing/KvxTrueSense.h"
#include "frame/base/Fail.h"
#include "frame/formats/NearestNames.h"

namespace kvx::frame {
namespace {

_KvxImage MakeImage(const Format& format, uint32_t width, uint32_t height, ptrdiff_t stride, const void* data) {
    return KvxImage_Make(LibraryCode(format).value_or(0), width, height, static_cast<uint32_t>(stride),
                         const_cast<void*>(data));  // the library only reads a source's data
}

void RequireStored(uint32_t result, std::string_view subject, std::string_view advice = "") {
    if (KvxResult_Failed(result))
        throw Error(result, fmt::format("{}: {} (0x{:08X}){}", subject, KvxResult_Text(result), result, advice));
}

}  // namespace

_KvxImage ImageOf(const SourceView& mosaic) {
    return MakeImage(mosaic.format, mosaic.width, mosaic.height, mosaic.stride, mosaic.data);
}

_KvxImage ImageOf(const DestinationView& picture) {
    return MakeImage(picture.format, picture.width, picture.height, picture.stride, picture.data);
}

const std::vector<Algorithm>& AlgorithmsOf(Family family) {
    static const std::vector<Algorithm> bayer = {{"bilinear", KvxBayerAlgorithm_Bilinear},
                                                 {"ipp", KvxBayerAlgorithm_IPP},
                                                 {"edge-aware", KvxBayerAlgorithm_EdgeAware},
                                                 {"fine", kOfFrameLayer},
                                                 {"swift", kOfFrameLayer}};
    static const std::vector<Algorithm> trueSense = {{"fast", KvxTrueSenseAlgorithm_Fast},
                                                     {"simple", KvxTrueSenseAlgorithm_Simple},
                                                     {"bayer-like", KvxTrueSenseAlgorithm_BayerLike},
                                                     {"kodak-like", KvxTrueSenseAlgorithm_KodakLike},
                                                     {"kodak", KvxTrueSenseAlgorithm_Kodak},
                                                     {"fine", kOfFrameLayer},
                                                     {"swift", kOfFrameLayer}};
    static const std::vector<Algorithm> none;
    return family == Family::Bayer ? bayer : family == Family::TrueSense ? trueSense : none;
}

Component::Component(Family family, const char* algorithmParameter, KvxComponent* store)
    : m_algorithms(AlgorithmsOf(family)), m_algorithmParameter(algorithmParameter), m_store(store) {
    if (!store) throw std::bad_alloc();
}

void Component::SetAlgorithm(std::string_view nameOrNumber) {
    const std::string text(nameOrNumber);
    std::vector<const char*> names;
    for (const Algorithm& algorithm : m_algorithms) {
        if (text == algorithm.name) {
            RequireStored(KvxComponent_SetParamInt(m_store, m_algorithmParameter, algorithm.number), text);
            return;
        }
        names.push_back(algorithm.name);
    }
    const bool isNumber = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
    if (isNumber && !KvxResult_Failed(KvxComponent_SetParamAsString(m_store, m_algorithmParameter, text.c_str())))
        return;
    Fail(KvxResult_UnknownName, "the algorithm '{}' is unknown for such frames: there are {}, and the numbers of {}",
         text, fmt::join(names, ", "), m_algorithmParameter);
}

std::string Component::AlgorithmName() const {
    const int64_t number = AlgorithmNumber();
    const auto found = std::find_if(m_algorithms.begin(), m_algorithms.end(),
                                    [number](const Algorithm& algorithm) { return algorithm.number == number; });
    return found == m_algorithms.end() ? std::to_string(number) : found->name;
}

void Component::SetParameter(const std::string& name, const std::string& value) {
    const uint32_t result = KvxComponent_SetParamAsString(m_store, name.c_str(), value.c_str());
    std::string advice;
    if (KvxResult_Failed(result)) {
        std::vector<std::string> names;
        for (const _KvxStParam& parameter : Parameters()) {
            names.emplace_back(parameter.name);
            if (name == parameter.name)
                advice = parameter.type == KvxParamType_Int
                             ? fmt::format("; it takes {} to {}", parameter.minValue.asInt, parameter.maxValue.asInt)
                             : "; it takes a number";
        }
        if (advice.empty()) advice = fmt::format("; did you mean {}?", fmt::join(NearestNames(name, names, 3), ", "));
    }
    RequireStored(result, fmt::format("{}={}", name, value), advice);
}

std::string Component::Parameter(const std::string& name) const {
    char text[64];  // the longest number is shorter
    uint32_t size = sizeof text;
    RequireStored(KvxComponent_GetParamAsString(m_store, name.c_str(), text, &size), name);
    return text;
}

int64_t Component::IntParameter(const char* name) const {
    int64_t value = 0;
    RequireStored(KvxComponent_GetParamInt(m_store, name, &value), name);
    return value;
}

std::vector<_KvxStParam> Component::Parameters() const {
    std::vector<_KvxStParam> parameters(KvxComponent_GetParamCount(m_store));
    for (uint32_t index = 0; index < parameters.size(); ++index)
        RequireStored(KvxComponent_GetParamByIdx(m_store, index, &parameters[index]), std::to_string(index));
    return parameters;
}

}  // namespace kvx::frame
