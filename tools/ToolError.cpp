#include "tools/ToolError.h"

#include "KvxDemosaicing/KvxResult.h"

namespace kvx::tool {

void RequireSuccess(uint32_t result, const std::string& subject, const std::string& advice) {
    if (KvxResult_Failed(result)) {
        Fail(ExitCode::Library, "{}: {} (0x{:08X}){}{}", subject, KvxResult_Text(result), result,
             advice.empty() ? "" : "; ", advice);
    }
}

}  // namespace kvx::tool
