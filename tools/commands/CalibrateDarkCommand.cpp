#include <fmt/format.h>

#include <memory>

#include "tools/calibrate/Dark.h"
#include "tools/calibrate/ProfileFile.h"
#include "tools/calibrate/StepOptions.h"
#include "tools/commands/CalibrateSteps.h"
#include "tools/console/Console.h"
#include "tools/console/TextTable.h"
#include "tools/files/OutputFile.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter =
    R"(Frames without light, with the lens cap on, at the exposure time and gain of later frames.
They give the black level of each filter colour, the noise without light and hot pixels. From
two frames on they also give the fixed pattern; if it is more than a quarter of the noise, a
dark frame is written next to the profile (camera-dark.png for camera.json). Take ten or more.

Example:
  kvx-demosaic calibrate dark dark*.raw -o camera.json)";

std::string Report(const FrameStack& stack, const DarkFigures& figures, const frame::CameraProfile& profile) {
    TextTable table({"frames", fmt::format("{} {}", stack.count, frame::Name(stack.format))});
    const auto& black = figures.blackLevel.ofFilters;
    table.AddRow({"black level", fmt::format("{:.3f} {:.3f} {:.3f} {:.3f}", black[0], black[1], black[2], black[3])});
    table.AddRow({"noise", fmt::format("{:.3f} samples", figures.noise)});
    table.AddRow({"fixed pattern", stack.count == 1 ? "unknown: needs two frames"
                                                    : fmt::format("{:.3f} samples{}", figures.pattern,
                                                                  figures.keepsPattern ? ", in the dark frame" : "")});
    table.AddRow({"hot pixels", fmt::format("{}", profile.hotPixels.size())});
    return table.Text();
}

void RunDark(const StepOptions& options) {
    constexpr double kMostZeros = 0.01;
    for (const std::string& path : options.frames) {
        RequireDistinct(path, frame::DarkFramePath(options.profile));
    }
    frame::CameraProfile profile = OpenProfile(options.profile);
    const FrameStack stack = StackFrames(options.frames, options.request);
    SetFrames(profile, stack.format, stack.mean.cols, stack.mean.rows, options.profile);
    const DarkFigures figures = CalibrateDark(stack, profile);
    SaveProfile(profile, options.profile);
    if (stack.zeroShare > kMostZeros) {
        PrintMessage(
            fmt::format("{:.0f} % of the samples are 0: the camera cuts off the noise of black, so that black "
                        "level and noise come out wrong; raise its offset",
                        100 * stack.zeroShare));
    }
    PrintText(Report(stack, figures, profile));
}

}  // namespace

void AddCalibrateDark(CLI::App& calibrate) {
    const auto options = std::make_shared<StepOptions>();
    CLI::App* command = calibrate.add_subcommand("dark", "Black level, noise and hot pixels from frames without light");
    AddStepOptions(*command, *options);
    command->footer(kFooter);
    command->callback([options] { RunDark(*options); });
}

}  // namespace kvx::tool
