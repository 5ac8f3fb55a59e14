#include <fmt/format.h>

#include <filesystem>
#include <memory>

#include "tools/calibrate/ProfileFile.h"
#include "tools/calibrate/StepOptions.h"
#include "tools/calibrate/chart/ChartDetector.h"
#include "tools/calibrate/chart/ChartFrame.h"
#include "tools/calibrate/chart/ChartPicture.h"
#include "tools/calibrate/chart/ChartReport.h"
#include "tools/commands/CalibrateSteps.h"
#include "tools/console/Arguments.h"
#include "tools/console/Console.h"
#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"
#include "tools/files/PictureEncoder.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter =
    R"(Frames of a colour chart with 24 patches (6x4, from dark skin to black), evenly lit, no
patch clipped, each patch at least 12 pixels wide. The chart may be anywhere in the frame,
in any orientation, mirrored, and seen at an angle. Its greys give the white balance; a
matrix whose rows sum to 1 then brings the patches as close to their published colours
(under D65) as it can: the mean CIEDE2000 of all patches that are not clipped.

Several frames share the matrix; each may have its own light. A chart that is not found
needs its --corners: those of the 24 patches together, in their order around the chart,
from any of them. The levels are those of the options, else of the sidecar, else of the
profile, which also corrects shading and defective pixels. The picture shows what was found and measured, and the patches next to their
references.

Examples:
  kvx-demosaic calibrate chart chart.raw -o camera.json
  kvx-demosaic calibrate chart chart.pgm --format BayerGR8 --black-level 12.5 -o camera.json
  kvx-demosaic calibrate chart chart.raw --corners 588,1143,1094,1148,1103,1488,600,1468 \
      -o camera.json --picture found.png)";

struct ChartOptions {
    StepOptions step;
    std::optional<std::array<cv::Point2d, 4>> corners;
    std::optional<frame::Levels> black;
    std::optional<frame::Levels> white;
    std::string picture;
};

std::array<cv::Point2d, 4> CornersFrom(const std::string& option, const std::string& text) {
    const std::array<double, 8> numbers = ParseNumbers<8>(option, text);
    std::array<cv::Point2d, 4> corners;
    for (size_t i = 0; i < corners.size(); ++i) {
        corners[i] = {numbers[2 * i], numbers[2 * i + 1]};
    }
    return corners;
}

/** The profile's name with "-chart.png" for its extension. */
std::string DefaultPicture(const std::string& profile) {
    const std::filesystem::path path(profile);
    return path.parent_path() / (path.stem().string() + "-chart.png");
}

/** The levels of the options, else of the sidecar. Enters them into the profile, unless it has its own. */
frame::Finish TakeLevels(const ChartOptions& options, const Sidecar& sidecar, frame::CameraProfile& profile,
                         const std::string& name) {
    const auto take = [](std::optional<frame::Levels>& ofProfile, const std::optional<frame::Levels>& given,
                         const std::optional<frame::Levels>& ofSidecar) {
        if (given || !ofProfile) ofProfile = given ? given : ofSidecar;
        return given ? *given : ofSidecar.value_or(frame::Levels());
    };
    frame::Finish levels;
    levels.blackLevel = take(profile.blackLevel, options.black, sidecar.blackLevel);
    levels.whiteLevel = take(profile.whiteLevel, options.white, sidecar.whiteLevel);
    if (!profile.blackLevel) {
        PrintMessage(
            fmt::format("{}: has no black level, 0 is taken: run 'calibrate dark' first, or add --black-level", name));
    }
    return levels;
}

ChartPlace LocateChart(const ChartOptions& options, const cv::Mat_<cv::Vec3f>& linear, const std::string& name) {
    if (!options.corners) {
        const std::optional<ChartPlace> place = FindChart(linear);
        if (!place) {
            Fail(ExitCode::Frame, "{}: no chart found: give the place of its patches with --corners", name);
        }
        return *place;
    }
    const ChartPlace place = ChartAt(*options.corners, linear);
    if (place.agreement < kLeastAgreementAtCorners) {
        Fail(ExitCode::Frame, "{}: the colours at --corners are not those of a chart", name);
    }
    return place;
}

std::string CornerText(const cv::Matx33d& toFrame) {
    std::string text;
    for (const cv::Point2d& corner : ChartCorners(toFrame)) {
        text += fmt::format("{}{:.0f},{:.0f}", text.empty() ? "" : ",", corner.x, corner.y);
    }
    return text;
}

FoundChart MeasureChart(const ChartOptions& options, const std::string& path, frame::CameraProfile& profile) {
    const std::string name = InputName(path);
    const FrameInput input = ReadFrame(path, options.step.request);
    if (input.frame.format.family == frame::Family::Mono) {
        Fail(ExitCode::Usage, "{}: is a mono frame, which has no colours to calibrate", name);
    }
    SetFrames(profile, input.frame.format, input.frame.samples.cols, input.frame.samples.rows, options.step.profile);
    const frame::Finish levels = TakeLevels(options, input.sidecar, profile, name);
    const RawFrame light = LightOf(input.frame, profile, levels, name);
    FoundChart chart{std::filesystem::path(name).filename().string(), LinearPicture(light, name), {}, {}};
    chart.toFrame = LocateChart(options, chart.linear, name).toFrame;
    chart.samples = MeasurePatches(light, chart.toFrame, name);
    PrintMessage(fmt::format("{}: chart at {}", name, CornerText(chart.toFrame)));
    return chart;
}

void RunChart(const ChartOptions& options) {
    const std::string picturePath = options.picture.empty() ? DefaultPicture(options.step.profile) : options.picture;
    const PictureKind kind = PictureKindFor(picturePath);
    if (options.corners && options.step.frames.size() > 1) {
        Fail(ExitCode::Usage, "--corners: are those of one frame, not of {}", options.step.frames.size());
    }
    if (picturePath == "-") {
        Fail(ExitCode::Usage, "--picture: give a file: the table goes to standard output");
    }
    frame::CameraProfile profile = OpenProfile(options.step.profile);
    RequireDistinct(frame::DarkFramePath(options.step.profile), picturePath);
    std::vector<FoundChart> charts;
    std::vector<PatchSamples> samples;
    std::vector<std::string> names;
    for (const std::string& path : options.step.frames) {
        RequireDistinct(path, picturePath);
        charts.push_back(MeasureChart(options, path, profile));
        samples.push_back(charts.back().samples);
        names.push_back(charts.back().name);
    }
    const ColourFit fit = FitColours(samples, names);
    profile.gains = fit.gains;
    profile.matrix.emplace();
    std::copy_n(fit.matrix.val, profile.matrix->size(), profile.matrix->begin());
    WritePicture(picturePath, {DrawCharts(charts, fit), 255}, kind);
    SaveProfile(profile, options.step.profile);
    PrintText(ChartTable(fit, names));
    if (const std::string warning = LightWarning(fit); !warning.empty()) {
        PrintMessage(warning);
    }
}

}  // namespace

void AddCalibrateChart(CLI::App& calibrate) {
    const auto options = std::make_shared<ChartOptions>();
    CLI::App* command =
        calibrate.add_subcommand("chart", "White balance and colour matrix from frames of a colour chart");
    AddStepOptions(*command, options->step);
    const auto read = [&](const char* option, auto& target, auto parse, const char* type, const char* help) {
        AddText(
            *command, option, [option, &target, parse](const std::string& text) { target = parse(option, text); }, type,
            help);
    };
    read("--corners", options->corners, CornersFrom, "X,Y,X,Y,X,Y,X,Y",
         "Corners of the 24 patches, instead of a search");
    read("--black-level", options->black, ParseLevels, "NUMBER", "Sample value of black, or four, one for each filter");
    read("--white-level", options->white, ParseLevels, "NUMBER", "Sample value of white, or four");
    command->add_option("--picture", options->picture, "Picture of what was found; default: PROFILE-chart.png")
        ->type_name("FILE");
    command->footer(kFooter);
    command->callback([options] { RunChart(*options); });
}

}  // namespace kvx::tool
