// Sidecars: the input is the content of one.
#include <tuple>

#include "tools/ToolRefusals.h"
#include "tools/files/Sidecar.h"

using namespace kvx::fuzz;
using namespace kvx::tool;

namespace {

/** All members. */
auto MembersOf(const Sidecar& sidecar) {
    const std::optional<kvx::frame::Gains>& gains = sidecar.gains;
    return std::tuple(sidecar.format, sidecar.width, sidecar.height, sidecar.stride, sidecar.offset, sidecar.matrix,
                      sidecar.blackLevel, sidecar.whiteLevel, gains.has_value(), gains ? gains->red : 0,
                      gains ? gains->green : 0, gains ? gains->blue : 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Sidecar sidecar;
    const auto parse = [&] {
        try {
            sidecar = ParseSidecar("frame.json", Bytes(data, data + size));
        } catch (const ToolError& error) {
            Require(std::strchr(error.what(), '\n') == nullptr, "a refusal is one line");
            throw;
        }
    };
    if (!IsRefusedByTool(parse, {ExitCode::Input}))
        Require(MembersOf(ParseSidecar("frame.json", SidecarContent(sidecar))) == MembersOf(sidecar),
                "what is written reads back");
    return 0;
}
