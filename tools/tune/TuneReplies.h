#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "tools/tune/TuneService.h"

namespace kvx::tool {

TuneReply JsonReply(const nlohmann::ordered_json& json);

/** {"error"} with a status from 400 on. */
TuneReply Refusal(int status, const std::string& message);

/** A value of the query, or `missing`. */
std::string TextIn(const TuneRequest& request, const std::string& key, const std::string& missing = "");

/** The same as a whole number that is not negative. Throws ExitCode::Usage. */
int NumberIn(const TuneRequest& request, const std::string& key, const std::string& missing = "");

}  // namespace kvx::tool
