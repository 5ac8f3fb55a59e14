#include "tools/frames/FrameOptions.h"

#include "tools/console/Arguments.h"
#include "tools/frames/Formats.h"

namespace kvx::tool {

void AddFrameOptions(CLI::App& command, FrameRequest& request) {
    AddText(
        command, "--format", [&request](const std::string& name) { request.format = RequireFormat(name); }, "NAME",
        "Format of the frame, such as BayerRG12 or BayerRG12p");
    AddNumber(command, "--width", request.width, "Pixels in a row");
    AddNumber(command, "--height", request.height, "Rows");
    AddNumber(command, "--stride", request.stride, "Bytes from row to row; default: rows without padding");
    AddNumber(command, "--skip-bytes", request.skipBytes, "Bytes before the first row");
    AddNumber(command, "--frame", request.frame, "Frame of a headerless file that has several, from 0");
    command.add_flag_callback(
        "--no-sidecar", [&request] { request.useSidecar = false; }, "Neither read nor write a frame's JSON file");
}

void AddFrameArgument(CLI::App& command, std::string& path) {
    command
        .add_option("FRAME", path, "Headerless raw, camera raw, DNG, PGM, PNG, TIFF or NumPy file; - is standard input")
        ->required();
}

}  // namespace kvx::tool
