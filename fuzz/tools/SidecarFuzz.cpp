// Sidecars: the input is the content of one.
#include "tools/ToolRefusals.h"
#include "tools/files/Sidecar.h"

using namespace kvx::fuzz;
using namespace kvx::tool;

namespace {

void RequireSame(const Sidecar& a, const Sidecar& b) {
    const auto areEqual = [](const auto& one, const auto& other) { return one == other; };
    Require(areEqual(a.format, b.format) && areEqual(a.width, b.width) && areEqual(a.height, b.height) &&
                areEqual(a.stride, b.stride) && areEqual(a.offset, b.offset) && areEqual(a.matrix, b.matrix) &&
                areEqual(a.blackLevel, b.blackLevel) && areEqual(a.whiteLevel, b.whiteLevel),
            "what is written reads back");
    Require(a.gains.has_value() == b.gains.has_value(), "gains that are written read back");
    if (a.gains)
        Require(a.gains->red == b.gains->red && a.gains->green == b.gains->green && a.gains->blue == b.gains->blue,
                "gains that are written read back");
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
        RequireSame(ParseSidecar("frame.json", SidecarContent(sidecar)), sidecar);
    return 0;
}
