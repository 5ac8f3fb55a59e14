#include "tools/BayerComponent.h"

#include <new>

#include "tools/ToolError.h"

namespace kvx::tool {
namespace {

constexpr const char* kAlgorithmParameter = "BayerAlgType";

}  // namespace

BayerComponent::BayerComponent() : m_component(KvxBayer_CreateComponent()) {
    if (!m_component) {
        throw std::bad_alloc();
    }
}

void BayerComponent::SetParameter(const std::string& name, const std::string& value) {
    RequireSuccess(KvxComponent_SetParamAsString(Store(), name.c_str(), value.c_str()),
                   fmt::format("--set {}={}", name, value), "'kvx-demosaic params' lists names and ranges");
}

std::string BayerComponent::ParameterText(const std::string& name) const {
    char text[64];  // the longest number takes less
    uint32_t size = sizeof(text);
    RequireSuccess(KvxComponent_GetParamAsString(Store(), name.c_str(), text, &size), "parameter " + name);
    return text;
}

std::vector<_KvxStParam> BayerComponent::Parameters() const {
    std::vector<_KvxStParam> parameters(KvxComponent_GetParamCount(Store()));
    for (uint32_t index = 0; index < parameters.size(); ++index) {
        RequireSuccess(KvxComponent_GetParamByIdx(Store(), index, &parameters[index]),
                       fmt::format("parameter {}", index));
    }
    return parameters;
}

void BayerComponent::SetAlgorithm(int64_t number) {
    RequireSuccess(KvxComponent_SetParamInt(Store(), kAlgorithmParameter, number),
                   fmt::format("parameter {} = {}", kAlgorithmParameter, number));
}

int64_t BayerComponent::Algorithm() const {
    int64_t number = 0;
    RequireSuccess(KvxComponent_GetParamInt(Store(), kAlgorithmParameter, &number), kAlgorithmParameter);
    return number;
}

}  // namespace kvx::tool
