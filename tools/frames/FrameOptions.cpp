#include "tools/frames/FrameOptions.h"

#include "tools/console/Arguments.h"
#include "tools/frames/Formats.h"

namespace kvx::tool {

void AddFrameOptions(CLI::App& command, FrameRequest& request) {
    command
        .add_option_function<std::string>(
            "--format", [&request](const std::string& name) { request.format = RequireFormat(name); },
            "Format of the frame, such as BayerRG12 or BayerRG12p")
        ->type_name("NAME");
    AddNumber(command, "--width", request.width, "Pixels in a row");
    AddNumber(command, "--height", request.height, "Rows");
    AddNumber(command, "--stride", request.stride, "Bytes from row to row; default: rows without padding");
    AddNumber(command, "--skip-bytes", request.skipBytes, "Bytes in front of the first row");
    command.add_flag_callback(
        "--no-sidecar", [&request] { request.useSidecar = false; }, "Do not read, or write, a frame's JSON file");
}

}  // namespace kvx::tool
