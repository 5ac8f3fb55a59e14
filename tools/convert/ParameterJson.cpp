#include "tools/convert/ParameterJson.h"

#include <cfloat>
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

/** Null where the declared minimum stands for "no lower bound". */
Json MinimumJson(const _KvxStParam& parameter) {
    const bool isUnbounded = parameter.type == KvxParamType_Float && parameter.minValue.asFloat == DBL_MIN;
    return isUnbounded ? Json(nullptr) : ValueJson(parameter, parameter.minValue);
}

}  // namespace

nlohmann::ordered_json ParameterJson(const frame::Converter& converter) {
    Json rows = Json::array();
    for (const _KvxStParam& parameter : converter.Parameters()) {
        rows.push_back({{"name", parameter.name},
                        {"type", TypeText(parameter)},
                        {"default", ValueJson(parameter, parameter.defaultValue)},
                        {"minimum", MinimumJson(parameter)},
                        {"maximum", ValueJson(parameter, parameter.maxValue)},
                        {"value", Json::parse(converter.Parameter(parameter.name))},
                        {"access", AccessText(parameter)}});
    }
    return rows;
}

}  // namespace kvx::tool
