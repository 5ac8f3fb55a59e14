#include <fmt/format.h>

#include <algorithm>
#include <memory>

#include "tools/calibrate/Flat.h"
#include "tools/calibrate/ProfileFile.h"
#include "tools/calibrate/StepOptions.h"
#include "tools/commands/CalibrateSteps.h"
#include "tools/console/Console.h"
#include "tools/console/TextTable.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter =
    R"(Frames of an even light, such as a white sheet of paper out of focus, exposed to half of
white, with the lens and aperture of later frames. They give the shading of each filter
colour and dead or weak pixels. Two frames or more, equally exposed, also give the noise in
light. Take ten or more, and run 'calibrate dark' first: flat frames need the black level.

Example:
  kvx-demosaic calibrate flat flat*.raw -o camera.json)";

std::string LargestGains(const frame::Shading& shading) {
    std::string text;
    for (const std::vector<float>& gains : shading.gains) {
        if (!gains.empty()) text += fmt::format("{}{:.3f}", text.empty() ? "" : " ", std::ranges::max(gains));
    }
    return text;
}

std::string Report(const FrameStack& stack, const FlatFigures& figures, const frame::CameraProfile& profile) {
    TextTable table({"frames", fmt::format("{} {}", stack.count, frame::Name(stack.format))});
    table.AddRow({"light", fmt::format("{:.1f} % of white", 100 * figures.signal)});
    table.AddRow({"largest gains", LargestGains(profile.shading)});
    table.AddRow({"dead pixels", fmt::format("{}", profile.deadPixels.size())});
    const auto line = [](const frame::NoiseLine& noise) {
        return fmt::format("{:.4f} x signal + {:.3f}", noise.slope, noise.intercept);
    };
    if (figures.hasNoise) {
        table.AddRow({"noise variance", line(profile.noise->colour)});
        if (stack.format.family == frame::Family::TrueSense) table.AddRow({"clear sites", line(profile.noise->pan)});
    } else {
        table.AddRow({"noise variance", "unknown: needs two equally exposed frames"});
    }
    return table.Text();
}

void RunFlat(const StepOptions& options) {
    frame::CameraProfile profile = OpenProfile(options.profile);
    PairNoise pairs(profile.blackLevel.value_or(frame::Levels()));
    const FrameStack stack = StackFrames(options.frames, options.request, profile.whiteLevel.value_or(frame::Levels()),
                                         [&](const RawFrame& frame) { pairs.Add(frame); });
    SetFrames(profile, stack.format, stack.mean.cols, stack.mean.rows, options.profile);
    const FlatFigures figures = CalibrateFlat(stack, pairs, profile);
    SaveProfile(profile, options.profile);
    if (!profile.blackLevel) {
        PrintMessage(fmt::format("{}: has no black level, 0 is taken: run 'calibrate dark' first", options.profile));
    }
    PrintText(Report(stack, figures, profile));
}

}  // namespace

void AddCalibrateFlat(CLI::App& calibrate) {
    const auto options = std::make_shared<StepOptions>();
    CLI::App* command = calibrate.add_subcommand("flat", "Shading, dead pixels and noise from evenly lit frames");
    AddStepOptions(*command, *options);
    command->footer(kFooter);
    command->callback([options] { RunFlat(*options); });
}

}  // namespace kvx::tool
