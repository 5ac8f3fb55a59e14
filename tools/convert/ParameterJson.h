#pragma once

#include <nlohmann/json_fwd.hpp>

#include "KvxFrame/Converter.h"

namespace kvx::tool {

/**
 * The parameters of a converter, an object each: name, type, default, minimum (null: no lower bound), maximum, value,
 * access.
 */
nlohmann::ordered_json ParameterJson(const frame::Converter& converter);

}  // namespace kvx::tool
