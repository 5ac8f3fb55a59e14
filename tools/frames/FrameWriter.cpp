#include "tools/frames/FrameWriter.h"

#include "tools/ToolError.h"
#include "tools/files/OutputFile.h"
#include "tools/files/PictureEncoder.h"
#include "tools/files/Pnm.h"

namespace kvx::tool {
namespace {

bool IsPgmName(const std::string& path) {
    return LowerExtension(path) == ".pgm";
}

frame::Format FileFormat(const FrameFile& file, const RawFrame& frame) {
    frame::Format format = frame.format;
    format.layout = file.layout;
    if (!frame::IsValid(format)) {
        Fail(ExitCode::Usage, "{}: this layout does not exist for {} bits: use {}", file.path, format.bits,
             frame::Name(frame.format));
    }
    if (IsPgmName(file.path) && file.layout != frame::Layout::Plain) {
        Fail(ExitCode::Usage, "{}: a PGM file cannot hold {}: give a name such as frame.raw", file.path,
             frame::Name(format));
    }
    return format;
}

}  // namespace

void WriteFrame(const FrameFile& file, const RawFrame& frame, const Sidecar& known) {
    const frame::Format format = FileFormat(file, frame);
    WriteOutput(file.path, IsPgmName(file.path) ? EncodePnm({frame.samples, frame::White(format)})
                                                : EncodePacked(frame.samples, format, file.padding));
    if (!file.hasSidecar) {
        return;
    }
    Sidecar sidecar = known;
    sidecar.format = format;
    sidecar.width = frame.samples.cols;
    sidecar.height = frame.samples.rows;
    sidecar.stride.reset();
    sidecar.offset.reset();
    WriteSidecar(file.path, sidecar);
}

}  // namespace kvx::tool
