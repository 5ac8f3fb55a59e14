#include "tools/commands/CalibrateSteps.h"
#include "tools/commands/Commands.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter =
    R"(A camera profile is a JSON file with what was measured of a camera once. Each step adds
what it measures to the profile and keeps the rest: dark first, then flat and chart, which
need the black level. 'kvx-demosaic calibrate STEP --help' describes a step.

Examples:
  kvx-demosaic calibrate dark dark*.raw -o camera.json
  kvx-demosaic calibrate flat flat*.raw -o camera.json
  kvx-demosaic calibrate chart chart.raw -o camera.json)";

}  // namespace

void AddCalibrateCommand(CLI::App& tool) {
    CLI::App* command = tool.add_subcommand("calibrate", "Measure a camera and write its profile");
    command->require_subcommand(1);
    for (const auto addStep : {AddCalibrateDark, AddCalibrateFlat, AddCalibrateChart}) {
        addStep(*command);
    }
    command->footer(kFooter);
}

}  // namespace kvx::tool
