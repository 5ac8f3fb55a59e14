#include "tools/tune/TuneReplies.h"

#include <nlohmann/json.hpp>

#include "tools/console/Arguments.h"
#include "tools/console/Console.h"

namespace kvx::tool {

TuneReply JsonReply(const nlohmann::ordered_json& json) {
    return {.body = JsonText(json, -1)};
}

TuneReply Refusal(int status, const std::string& message) {
    TuneReply reply = JsonReply({{"error", message}});
    reply.status = status;
    return reply;
}

std::string TextIn(const TuneRequest& request, const std::string& key, const std::string& missing) {
    const auto found = request.query.find(key);
    return found == request.query.end() ? missing : found->second;
}

int NumberIn(const TuneRequest& request, const std::string& key, const std::string& missing) {
    return static_cast<int>(ParseNumber(key, TextIn(request, key, missing), INT32_MAX));
}

}  // namespace kvx::tool
