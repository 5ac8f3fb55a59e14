#include "tools/Parameters.h"

#include "tools/ToolError.h"

namespace kvx::tool {

void Parameters::SetText(const std::string& name, const std::string& value) {
    RequireSuccess(KvxComponent_SetParamAsString(m_store, name.c_str(), value.c_str()),
                   fmt::format("--set {}={}", name, value), "'kvx-demosaic params' lists names and ranges");
}

void Parameters::SetInt(const std::string& name, int64_t value) {
    RequireSuccess(KvxComponent_SetParamInt(m_store, name.c_str(), value),
                   fmt::format("parameter {} = {}", name, value));
}

std::string Parameters::Text(const std::string& name) const {
    char text[64];  // the longest number takes less
    uint32_t size = sizeof(text);
    RequireSuccess(KvxComponent_GetParamAsString(m_store, name.c_str(), text, &size), "parameter " + name);
    return text;
}

int64_t Parameters::Int(const std::string& name) const {
    int64_t value = 0;
    RequireSuccess(KvxComponent_GetParamInt(m_store, name.c_str(), &value), "parameter " + name);
    return value;
}

std::vector<_KvxStParam> Parameters::Descriptors() const {
    std::vector<_KvxStParam> descriptors(KvxComponent_GetParamCount(m_store));
    for (uint32_t index = 0; index < descriptors.size(); ++index) {
        RequireSuccess(KvxComponent_GetParamByIdx(m_store, index, &descriptors[index]),
                       fmt::format("parameter {}", index));
    }
    return descriptors;
}

}  // namespace kvx::tool
