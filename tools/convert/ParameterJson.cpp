#include "tools/convert/ParameterJson.h"

#include <cfloat>
#include <cstdint>
#include <nlohmann/json.hpp>

namespace kvx::tool {
namespace {

using Json = nlohmann::ordered_json;

std::string TypeText(const _KvxStParam& parameter) {
    return parameter.type == KvxParamType_Float ? "float" : "integer";
}

std::string AccessText(const _KvxStParam& parameter) {
    const bool canRead = (parameter.flags & KvxParamAccess_Read) != 0;
    const bool canWrite = (parameter.flags & KvxParamAccess_Write) != 0;
    return canRead && canWrite ? "read/write" : canWrite ? "write" : canRead ? "read" : "none";
}

Json ValueJson(const _KvxStParam& parameter, const _KvxParamValue& value) {
    return parameter.type == KvxParamType_Float ? Json(value.asFloat) : Json(value.asInt);
}

/** Null where the declared limit stands for "no limit". */
Json LimitJson(const _KvxStParam& parameter, const _KvxParamValue& limit) {
    const bool isFloat = parameter.type == KvxParamType_Float;
    const bool isNone = isFloat ? limit.asFloat == DBL_MIN || limit.asFloat == DBL_MAX : limit.asInt == INT64_MAX;
    return isNone ? Json(nullptr) : ValueJson(parameter, limit);
}

}  // namespace

nlohmann::ordered_json ParameterJson(const frame::Converter& converter) {
    Json rows = Json::array();
    for (const _KvxStParam& parameter : converter.Parameters()) {
        rows.push_back({{"name", parameter.name},
                        {"type", TypeText(parameter)},
                        {"default", ValueJson(parameter, parameter.defaultValue)},
                        {"minimum", LimitJson(parameter, parameter.minValue)},
                        {"maximum", LimitJson(parameter, parameter.maxValue)},
                        {"value", Json::parse(converter.Parameter(parameter.name))},
                        {"access", AccessText(parameter)},
                        {"description", frame::ParameterText(converter.SourceFamily(), parameter.name)}});
    }
    return rows;
}

}  // namespace kvx::tool
