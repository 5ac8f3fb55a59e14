#include "tools/calibrate/StepOptions.h"

#include "tools/frames/FrameOptions.h"

namespace kvx::tool {

void AddStepOptions(CLI::App& command, StepOptions& options) {
    command.add_option("FRAMES", options.frames, "Headerless raw, PGM, PNG or TIFF files of one camera setting")
        ->required();
    command
        .add_option("-o,--output", options.profile,
                    "Camera profile, which keeps what it has of other steps; default: camera.json")
        ->type_name("PROFILE");
    AddFrameOptions(command, options.request);
}

}  // namespace kvx::tool
