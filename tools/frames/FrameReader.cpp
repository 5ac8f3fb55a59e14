#include "tools/frames/FrameReader.h"

#include "KvxFrame/SampleDepth.h"
#include "tools/ToolError.h"
#include "tools/files/CameraRaw.h"
#include "tools/files/InputFile.h"
#include "tools/files/PictureDecoder.h"
#include "tools/files/RawLayout.h"
#include "tools/frames/FrameError.h"
#include "tools/frames/Inference.h"

namespace kvx::tool {
namespace {

/** Enough to recognise a file that is not headerless: a signature, or the header of a PNM file with its comments. */
constexpr uint64_t kHeaderBytes = 1u << 16;

frame::Format RequireSource(const std::optional<frame::Format>& format, const std::string& name) {
    if (!format) {
        Fail(ExitCode::Usage,
             "{}: unknown format: neither a sidecar nor the file name gives it; add --format, such as BayerRG8", name);
    }
    if (!frame::IsSource(*format)) {
        Fail(ExitCode::Usage, "{}: {} cannot be converted: 'kvx-demosaic formats' lists what convert reads", name,
             frame::Name(*format));
    }
    return *format;
}

void RequireFileSize(const cv::Mat& pixels, Inference& inference, const FrameRequest& request,
                     const std::string& name) {
    if (request.stride || request.skipBytes) {
        Fail(ExitCode::Usage, "{}: is a picture file, which has its own layout: leave out --stride and --skip-bytes",
             name);
    }
    const Sidecar& sidecar = inference.FromSidecar();
    const uint64_t width = pixels.cols;
    const uint64_t height = pixels.rows;
    const uint64_t expectedWidth = request.width.value_or(sidecar.width.value_or(width));
    const uint64_t expectedHeight = request.height.value_or(sidecar.height.value_or(height));
    if (expectedWidth != width || expectedHeight != height) {
        Fail(ExitCode::Frame,
             "{}: has {}x{} pixels by its header, not {}x{}: leave out --width and --height, or correct the sidecar",
             name, width, height, expectedWidth, expectedHeight);
    }
}

RawFrame FrameFromPicture(const Bytes& content, const frame::Format& format, Inference& inference,
                          const FrameRequest& request, const std::string& name) {
    const cv::Mat pixels = DecodePicture(content, name).pixels;
    if (pixels.channels() != 1) {
        Fail(ExitCode::Input, "{}: is a colour picture, not a raw frame: 'kvx-demosaic mosaic' makes a frame from it",
             name);
    }
    RequireFileSize(pixels, inference, request, name);
    if ((pixels.elemSize() == 1) != (format.bits == 8)) {
        Fail(ExitCode::Frame, "{}: has {}-bit samples, but {} does not: give a --format with {} bits", name,
             8 * pixels.elemSize(), frame::Name(format), pixels.elemSize() == 1 ? "8" : "10 to 16");
    }
    CheckFrameSize(pixels.cols, pixels.rows, name);
    // Samples in such files are never packed.
    return {frame::Unpacked(format), pixels};
}

RawLayout RequireLayout(const frame::Format& format, Inference& inference, const std::string& name) {
    const std::optional<uint64_t> width = inference.Width();
    const std::optional<uint64_t> height = inference.Height();
    if (!width || !height) {
        Fail(
            ExitCode::Usage,
            "{}: unknown size: it is not a PGM, PNG, TIFF or NumPy file, and neither a sidecar nor its name gives one; "
            "add --width and --height ('kvx-demosaic guess' finds likely ones)",
            name);
    }
    return {format, *width, *height, inference.Stride(), inference.SkipBytes()};
}

RawLayout RequireSeveral(const InputFile& file, Inference& inference, const std::string& name) {
    if (IsPictureFile(file.Part(0, kHeaderBytes))) {
        Fail(ExitCode::Usage, "{}: --frame and --frames are for headerless files, and this file has one frame", name);
    }
    return RequireLayout(RequireSource(inference.Format(), name), inference, name);
}

FrameInput FrameOfSeveral(const std::string& path, const FrameRequest& request, const std::string& name) {
    RequireRegular(path);
    const InputFile file(path);
    Inference inference(path, request);
    const RawLayout layout = RequireSeveral(file, inference, name);
    const uint64_t count = FrameCount(layout, file.Size(), name);
    if (*request.frame >= count) {
        Fail(ExitCode::Frame, "{}: --frame {} does not exist: the file has {} frames, counted from 0", name,
             *request.frame, count);
    }
    RawFrame frame = CutFrame(file, layout, *request.frame);
    WithExitCode(ExitCode::Frame, name, [&] { frame::CheckSampleDepth(ViewOf(frame)); });
    std::vector<FrameFact> facts = inference.Facts(frame.samples);
    facts.push_back({"frame", fmt::format("{} of {}", *request.frame, count), "options"});
    return {std::move(frame), layout.format, inference.FromSidecar(), {}, std::move(facts), inference.Inferred()};
}

/** The JSON file next to a camera raw file overrides parts of what the file says, but not its layout. */
FrameInput FrameFromCameraRaw(const CameraRaw& raw, const std::string& path, const FrameRequest& request,
                              const std::string& name) {
    if (request.format || request.width || request.height || request.stride || request.skipBytes) {
        Fail(ExitCode::Usage,
             "{}: is a camera raw file, which has its own layout: leave out --format, --width, --height, --stride and "
             "--skip-bytes",
             name);
    }
    FrameInput input{raw.frame, raw.frame.format, {}, raw.known, {}, ""};
    if (request.useSidecar) input.sidecar = ReadSidecar(path);
    const auto complete = [&input](auto Sidecar::*part) {
        auto& ofFile = input.ofFile.*part;
        auto& value = input.sidecar.*part;
        if (value) {
            ofFile.reset();
        } else {
            value = ofFile;
        }
    };
    complete(&Sidecar::blackLevel);
    complete(&Sidecar::whiteLevel);
    complete(&Sidecar::gains);
    complete(&Sidecar::matrix);
    complete(&Sidecar::orientation);
    input.facts = {{"format", frame::Name(input.fileFormat), "header"},
                   {"width", std::to_string(input.frame.samples.cols), "header"},
                   {"height", std::to_string(input.frame.samples.rows), "header"}};
    return input;
}

}  // namespace

uint64_t CountFrames(const std::string& path, const FrameRequest& request) {
    const std::string name = InputName(path);
    RequireRegular(path);
    const InputFile file(path);
    Inference inference(path, request);
    return FrameCount(RequireSeveral(file, inference, name), file.Size(), name);
}

FrameInput ReadFrame(const std::string& path, const FrameRequest& request) {
    const std::string name = InputName(path);
    if (request.frame) {
        return FrameOfSeveral(path, request, name);
    }
    InputFile file(path);
    const Bytes header = file.Part(0, kHeaderBytes);
    if (MayBeCameraRaw(header)) {
        if (std::optional<CameraRaw> raw = DecodeCameraRaw(file.Whole(), path, name)) {
            return FrameFromCameraRaw(*raw, path, request, name);
        }
    }
    Inference inference(path, request);
    const frame::Format format = RequireSource(inference.Format(), name);
    RawFrame frame = IsPictureFile(header) ? FrameFromPicture(file.Whole(), format, inference, request, name)
                                           : CutFrame(file, RequireLayout(format, inference, name), name);
    WithExitCode(ExitCode::Frame, name, [&] { frame::CheckSampleDepth(ViewOf(frame)); });
    std::vector<FrameFact> facts = inference.Facts(frame.samples);
    return {std::move(frame), format, inference.FromSidecar(), {}, std::move(facts), inference.Inferred()};
}

}  // namespace kvx::tool
