#include "tools/commands/Commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>

#include "KvxFrame/Converter.h"
#include "tools/ToolError.h"
#include "tools/console/Arguments.h"
#include "tools/console/Console.h"
#include "tools/console/TextTable.h"
#include "tools/files/CameraRaw.h"
#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"
#include "tools/files/PictureDecoder.h"
#include "tools/files/PictureEncoder.h"
#include "tools/frames/FrameOptions.h"
#include "tools/look/Continuity.h"
#include "tools/look/Guess.h"
#include "tools/look/PictureView.h"
#include "tools/look/SampleStatistics.h"
#include "tools/look/Sheet.h"
#include "tools/look/TileAnalysis.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter =
    R"(Without --width and --height, guess tries every size that fills the file: widths that are
multiples of 4, the longer side at most 2.4 times the shorter. PGM, PNG and TIFF files contain their size.

How it works: 'continuity' measures how much more alike samples two and four sites apart
are than any two samples; a wrong layout or width destroys it. 'explained' is the share of
the differences between the sites of a tile that disappears when only sites of the same
colour are compared. The score is their product.

Limits: exchanging red and blue changes neither value, so such pairs have the same score.
The one with more strong warm than strong cold colours comes first, which is right for
most scenes but not for all. A scene without colours does not reveal its pattern.

Examples:
  kvx-demosaic guess unknown.raw
  kvx-demosaic guess unknown.raw --width 1936 --height 1216 --output sheet.png)";

constexpr size_t kCandidates = 4;
constexpr size_t kShown = 8;

struct GuessOptions {
    std::string input;
    std::string output = "guess.png";
    KnownFacts known;
    std::optional<uint64_t> skipBytes;
    bool asJson = false;
};

std::vector<LayoutCandidate> FindFileLayouts(const GuessOptions& options, const std::string& name) {
    Bytes content = ReadInput(options.input);
    if (DecodeCameraRaw(content, options.input, name)) {
        Fail(ExitCode::Usage, "{}: is a camera raw file, which names its format: 'kvx-demosaic info' shows it", name);
    }
    if (IsPictureFile(content)) {
        const cv::Mat samples = DecodePicture(content, name).pixels;
        if (samples.channels() != 1) {
            Fail(ExitCode::Input, "{}: is a colour picture, not a raw frame", name);
        }
        const uint64_t bits = options.known.bits.value_or(BitsUsed(samples));
        return {{{frame::Family::Mono, static_cast<uint8_t>(bits)}, samples, Continuity(samples)}};
    }
    const uint64_t skipBytes = options.skipBytes.value_or(0);
    if (skipBytes >= content.size()) {
        Fail(ExitCode::Frame, "{}: holds {} bytes, no frame after --skip-bytes {}", name, content.size(), skipBytes);
    }
    content.erase(content.begin(), content.begin() + static_cast<ptrdiff_t>(skipBytes));
    return FindLayouts(content, options.known, kCandidates);
}

Guesses GuessFile(const GuessOptions& options) {
    const std::string name = InputName(options.input);
    std::vector<LayoutCandidate> candidates = FindFileLayouts(options, name);
    const auto isSmall = [](const LayoutCandidate& candidate) {
        return std::min(candidate.samples.rows, candidate.samples.cols) < TileAnalysis::kSmallestSide;
    };
    candidates.erase(std::remove_if(candidates.begin(), candidates.end(), isSmall), candidates.end());
    if (candidates.empty()) {
        Fail(ExitCode::Frame,
             "{}: no frame of at least {} rows and columns fits its size: give --width and --height, --depth if you "
             "know it, and --skip-bytes for a header",
             name, TileAnalysis::kSmallestSide);
    }
    return RankFormats(candidates);
}

std::string SizeText(const Guess& guess) {
    return fmt::format("{}x{}", guess.samples.cols, guess.samples.rows);
}

/** The frame as a picture for a display, balanced by grey world. */
cv::Mat Developed(const Guess& guess) {
    cv::Mat picture(guess.samples.size(), CV_8UC3);
    const RawFrame raw{frame::Unpacked(guess.format), guess.samples};
    frame::Options options;
    options.finish.emplace();
    options.finish->whiteBalance = frame::WhiteBalance::GreyWorld;
    options.finish->tone = frame::ToneCurve::Srgb;
    frame::Convert(ViewOf(raw), PictureView(picture), options);
    return picture;
}

cv::Mat DrawGuesses(const std::string& name, const std::vector<Guess>& ranking) {
    constexpr int kWidth = 400;
    constexpr size_t kColumns = 4;
    std::vector<std::vector<SheetCell>> rows;
    for (size_t index = 0; index < std::min(ranking.size(), kShown); ++index) {
        const Guess& guess = ranking[index];
        if (index % kColumns == 0) {
            rows.emplace_back();
        }
        rows.back().push_back({FittedToWidth(Developed(guess), kWidth),
                               fmt::format("{}. {}", index + 1, frame::Name(guess.format)),
                               fmt::format("{}, score {:.2f} %", SizeText(guess), 100 * guess.score)});
    }
    return DrawSheet("guesses for " + name, rows);
}

std::string Verdict(const Guesses& guesses) {
    return guesses.isPatternKnown
               ? "1 and 2 differ only in red and blue; 1 has the warmer colours. Look at the sheet.\n"
               : "Uncertain: a mono frame, or a scene whose colours do not reveal the pattern or the size.\n";
}

std::string GuessTable(const Guesses& guesses) {
    TextTable table({"rank", "format", "size", "score", "continuity", "explained", "warmth"});
    for (size_t index = 0; index < std::min(guesses.ranking.size(), kShown); ++index) {
        const Guess& guess = guesses.ranking[index];
        table.AddRow({std::to_string(index + 1), frame::Name(guess.format), SizeText(guess),
                      fmt::format("{:.2f} %", 100 * guess.score), fmt::format("{:.2f} %", 100 * guess.continuity),
                      fmt::format("{:.2f} %", 100 * guess.explained), fmt::format("{:+.3f}", guess.warmth)});
    }
    return table.Text() + Verdict(guesses);
}

std::string GuessJson(const Guesses& guesses) {
    auto rows = nlohmann::ordered_json::array();
    for (const Guess& guess : guesses.ranking) {
        rows.push_back({{"format", frame::Name(guess.format)},
                        {"width", guess.samples.cols},
                        {"height", guess.samples.rows},
                        {"score", guess.score},
                        {"continuity", guess.continuity},
                        {"explained", guess.explained},
                        {"warmth", guess.warmth}});
    }
    return JsonText({{"pattern_known", guesses.isPatternKnown}, {"ranking", rows}});
}

void RunGuess(const GuessOptions& options) {
    const PictureKind kind = PictureKindFor(options.output);
    RequireDistinct(options.input, options.output);
    const Guesses guesses = GuessFile(options);
    const cv::Mat sheet = DrawGuesses(InputName(options.input), guesses.ranking);
    WritePicture(options.output, {sheet, 255}, kind);
    PrintText(options.asJson ? GuessJson(guesses) : GuessTable(guesses));
}

}  // namespace

void AddGuessCommand(CLI::App& tool) {
    const auto options = std::make_shared<GuessOptions>();
    CLI::App* command = tool.add_subcommand("guess", "Guess the format of a frame from its samples");
    AddFrameArgument(*command, options->input);
    AddNumber(*command, "--width", options->known.width, "Pixels in a row");
    AddNumber(*command, "--height", options->known.height, "Rows");
    AddNumber(*command, "--depth", options->known.bits, "Bits per sample", 16);
    AddNumber(*command, "--skip-bytes", options->skipBytes, "Bytes before the first row");
    command->add_option("-o,--output", options->output, "Sheet of the best guesses; default: guess.png")
        ->type_name("FILE");
    AddJsonFlag(*command, options->asJson);
    command->footer(kFooter);
    command->callback([options] { RunGuess(*options); });
}

}  // namespace kvx::tool
