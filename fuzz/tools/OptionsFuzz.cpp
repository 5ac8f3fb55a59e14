// Options as users write them: each line of the input is an argument.
#include <cmath>
#include <sstream>

#include "KvxFrame/Converter.h"
#include "support/Refusals.h"
#include "tools/ToolRefusals.h"
#include "tools/console/Arguments.h"
#include "tools/convert/FinishPlan.h"
#include "tools/frames/FrameOptions.h"

using namespace kvx::fuzz;
using namespace kvx::tool;

namespace {

void ParseAlone(const std::string& text) {
    IsRefusedByTool([&] { Require(ParseNumber("-n", text, 1000) <= 1000, "a number is in its range"); },
                    {ExitCode::Usage});
    IsRefusedByTool([&] { ParseWeights("-w", text); }, {ExitCode::Usage});
    _KvxRect region{};
    if (!IsRefusedByTool([&] { region = ParseRegion("-r", text); }, {ExitCode::Usage}))
        Require(
            region.x <= INT32_MAX && region.y <= INT32_MAX && region.width <= INT32_MAX && region.height <= INT32_MAX,
            "a region fits any frame");
}

void ParseTogether(std::vector<std::string> arguments) {
    FrameRequest frame;
    FinishRequest request;
    CLI::App app;
    AddFrameOptions(app, frame);
    AddFinishOptions(app, request);
    std::reverse(arguments.begin(), arguments.end());  // as CLI11 wants them
    try {
        if (IsRefusedByTool([&] { app.parse(arguments); }, {ExitCode::Usage})) return;
    } catch (const CLI::Error&) {
        return;
    }
    std::optional<kvx::frame::Finish> finish;
    const kvx::frame::Format format = Unpacked(frame.format.value_or(kvx::frame::Format()));
    if (!IsSource(format)) return;
    FrameInput input;
    input.frame = MakeRawFrame(format, {8, 8});
    input.fileFormat = format;
    input.frame.samples.setTo(White(format) / 2);
    if (IsRefusedByTool([&] { finish = PlanFinish(request, input, "frame").finish; }, {ExitCode::Usage})) return;
    if (!finish) return;
    for (const double level : finish->blackLevel.ofFilters)
        Require(level >= 0 && level < White(format), "levels fit the format");
    for (const double number : finish->matrix) Require(std::isfinite(number), "numbers are finite");
    kvx::frame::Converter converter(kvx::frame::Family::Mono);
    IsRefused([&] { converter.SetFinish(finish); }, {0x80070004});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::istringstream lines(std::string(data, data + size));
    std::vector<std::string> arguments;
    for (std::string line; std::getline(lines, line);) {
        ParseAlone(line);
        arguments.push_back(line);
    }
    ParseTogether(arguments);
    return 0;
}
