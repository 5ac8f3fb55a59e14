#include "tools/convert/FrameJob.h"

#include "KvxFrame/Geometry.h"
#include "tools/convert/ConverterOptions.h"
#include "tools/convert/DngFacts.h"
#include "tools/files/Dng.h"
#include "tools/files/InputFile.h"
#include "tools/files/Orientation.h"
#include "tools/files/OutputFile.h"
#include "tools/files/PictureEncoder.h"
#include "tools/frames/FrameConversion.h"
#include "tools/frames/FrameError.h"

namespace kvx::tool {
FileReport FrameJob::Run(const FileTask& task) {
    FileReport report;
    report.task = task;
    const auto start = std::chrono::steady_clock::now();
    try {
        Convert(task, report);
    } catch (...) {
        report.failure = CurrentFailure();
    }
    report.time = std::chrono::steady_clock::now() - start;
    return report;
}

void FrameJob::Convert(const FileTask& task, FileReport& report) {
    RequireDistinct(task.input, task.output);
    FrameRequest request = m_settings.request;
    if (task.frame) request.frame = task.frame;
    const FrameInput input = ReadFrame(task.input, request);
    const std::string name = InputName(task.input);
    frame::SourceView source = ViewOf(input.frame);
    if (m_settings.crop) {
        source =
            WithExitCode(ExitCode::Frame, name + ": --crop", [&] { return frame::Crop(source, *m_settings.crop); });
    }
    const FinishPlan plan = PlanFinish(m_settings.finish, input, name);
    report.inferred = input.inferred;
    report.format = frame::Name(input.fileFormat);
    if (!task.kind) {
        WriteDng(task, source, input, plan, report);
        return;
    }
    frame::Converter& converter = ConverterFor(source.format.family);
    WithExitCode(ExitCode::Usage, name, [&] { converter.SetFinish(plan.finish, frame::kAllGiven); });
    Picture picture = ConvertFrame(converter, source, m_settings.destination, name);
    if (input.sidecar.orientation) {
        MakeUpright(picture.pixels, *input.sidecar.orientation);
    }
    if (m_settings.flip) {
        cv::flip(picture.pixels, picture.pixels, *m_settings.flip);
    }
    WritePicture(task.output, picture, *task.kind, m_settings.jpegQuality);

    report.algorithm = converter.AlgorithmName();
    report.width = picture.pixels.cols;
    report.height = picture.pixels.rows;
    report.gains = converter.LastGains();
    report.exposure = converter.LastExposure();
    report.hints = FrameHints(m_settings.finish, input, plan);
    if (converter.LastGainsLimited()) {
        report.hints.push_back(
            fmt::format("white balance: hardly any colour of the frame could be that of a grey surface, so the gains "
                        "({:.3g}, {:.3g}, {:.3g}) are a limit and not a measurement: give --white-balance",
                        report.gains.red, report.gains.green, report.gains.blue));
    }
}

void FrameJob::WriteDng(const FileTask& task, const frame::SourceView& source, const FrameInput& input,
                        const FinishPlan& plan, FileReport& report) {
    const frame::CameraProfile* camera = m_settings.finish.camera.get();
    const Sidecar known = DngFacts(plan, source, input.sidecar.orientation);
    const RawFrame frame = UnpackFrame(source);
    WriteOutput(task.output, EncodeDng(frame, known, camera != nullptr ? camera->noise : std::nullopt, task.output));
    report.width = frame.samples.cols;
    report.height = frame.samples.rows;
    report.gains = known.gains.value_or(frame::Gains());
    report.hints = DngHints(known, input.sidecar, camera);
}

frame::Converter& FrameJob::ConverterFor(frame::Family family) {
    if (const auto found = m_converters.find(family); found != m_converters.end()) {
        return found->second;
    }
    std::optional<frame::Site> origin;
    if (m_settings.crop) origin = {m_settings.crop->x, m_settings.crop->y};
    return m_converters.emplace(family, MakeConverter(m_settings, family, origin)).first->second;
}

}  // namespace kvx::tool
