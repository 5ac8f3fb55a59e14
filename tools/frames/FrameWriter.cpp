#include "tools/frames/FrameWriter.h"

#include "tools/ToolError.h"
#include "tools/files/Dng.h"
#include "tools/files/InputFile.h"
#include "tools/files/Npy.h"
#include "tools/files/OutputFile.h"
#include "tools/files/PictureEncoder.h"
#include "tools/files/Pnm.h"

namespace kvx::tool {
namespace {

frame::Format FileFormat(const FrameFile& file, FrameKind kind, const RawFrame& frame) {
    frame::Format format = frame.format;
    format.layout = file.layout;
    if (!frame::IsValid(format)) {
        Fail(ExitCode::Usage, "{}: this layout does not exist for {} bits: use {}", file.path, format.bits,
             frame::Name(frame.format));
    }
    if (kind != FrameKind::Raw && file.layout != frame::Layout::Plain) {
        Fail(ExitCode::Usage, "{}: this kind of file cannot hold {}: give a name such as frame.raw", file.path,
             frame::Name(format));
    }
    return format;
}

}  // namespace

FrameKind FrameKindFor(const std::string& path) {
    const std::string extension = LowerExtension(path);
    return extension == ".pgm"   ? FrameKind::Pgm
           : extension == ".dng" ? FrameKind::Dng
           : extension == ".npy" ? FrameKind::Npy
                                 : FrameKind::Raw;
}

void WriteFrame(const FrameFile& file, const RawFrame& frame, const Sidecar& known,
                const std::optional<frame::SensorNoise>& noise) {
    const FrameKind kind = file.kind.value_or(FrameKindFor(file.path));
    const frame::Format format = FileFormat(file, kind, frame);
    WriteOutput(file.path, kind == FrameKind::Pgm   ? EncodePnm({frame.samples, frame::White(format)})
                           : kind == FrameKind::Dng ? EncodeDng(frame, known, noise, file.path)
                           : kind == FrameKind::Npy ? EncodeNpy(frame.samples)
                                                    : EncodePacked(frame.samples, format, file.padding));
    if (!file.hasSidecar || kind == FrameKind::Dng) {
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
