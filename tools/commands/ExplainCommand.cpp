#include "tools/commands/Commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <memory>

#include "KvxFrame/Format.h"
#include "tools/ToolError.h"
#include "tools/console/Console.h"
#include "tools/console/TextTable.h"
#include "tools/look/FormatDrawing.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter =
    R"(FORMAT is a name of any scheme (this library's, PFNC, GStreamer, V4L2, OpenCV) or a code
in hexadecimal (PFNC or this library's). Colours appear on a terminal unless NO_COLOR is set.

Examples:
  kvx-demosaic explain BayerRG12p
  kvx-demosaic explain COLOR_BayerBG2BGR
  kvx-demosaic explain 0x010C0059)";

std::optional<uint32_t> ParseCode(const std::string& text) {
    uint32_t code = 0;
    const char* end = text.data() + text.size();
    if (text.size() < 3 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X')) {
        return std::nullopt;
    }
    const auto [stop, error] = std::from_chars(text.data() + 2, end, code, 16);
    return error == std::errc() && stop == end ? std::optional(code) : std::nullopt;
}

/** PFNC's codes and the library's are different numbers for all formats that both have. */
frame::Format RequireFormatOrCode(const std::string& text) {
    if (const auto code = ParseCode(text)) {
        const auto format = frame::FormatByPfncCode(*code);
        const auto own = format ? format : frame::FormatByLibraryCode(*code);
        if (!own) {
            Fail(ExitCode::Usage, "{}: neither PFNC nor the library has a mosaic, mono or RGB format of this code",
                 text);
        }
        return *own;
    }
    try {
        return frame::FormatByName(text);
    } catch (const frame::Error& error) {
        Fail(ExitCode::Usage, "{} 'kvx-demosaic formats' lists all", error.what());
    }
}

std::string Code(const std::optional<uint32_t>& code) {
    return code ? fmt::format("0x{:08X}", *code) : "-";
}

/** All names of one scheme. */
std::string NamesText(const frame::Format& format, frame::Scheme scheme) {
    std::string text;
    for (const frame::FormatName& name : frame::NamesOf(format)) {
        if (name.scheme == scheme) {
            text += (text.empty() ? "" : ", ") + name.name;
        }
    }
    return text.empty() ? "-" : text;
}

/** OpenCV converts unpacked samples, whatever their depth, and names its conversions for bytes. */
frame::Format AsOpenCvSees(const frame::Format& format) {
    return frame::WithBits(format, 8);
}

/** The conversion whose letters are those that everybody else gives this mosaic. */
std::string OpenCvTrap(const frame::Format& format) {
    const std::string tempting =
        fmt::format("COLOR_Bayer{}{}2BGR", frame::FilterAt(format, 0, 0), frame::FilterAt(format, 0, 1));
    return fmt::format(
        "OpenCV's two letters are those of the second row, second and third column: its\n"
        "{} is for a {} sensor and would swap red and blue here.\n",
        tempting, frame::Name(frame::FormatByName(tempting)).substr(0, 7));
}

std::string Explain(const frame::Format& format, const Paint& paint) {
    std::string text =
        fmt::format("{}: {}\n\n{}\n", frame::Name(format), DescribeFormat(format), DrawTile(format, paint));
    if (const std::string bits = DrawBits(format, paint); !bits.empty()) {
        text += fmt::format("Bits of the first samples (a, b, ...) in memory, bit 7 on the left:\n\n{}\n", bits);
    }
    TextTable names({"scheme", "code", "names"});
    names.AddRow({"library", Code(frame::LibraryCode(format)), NamesText(format, frame::Scheme::Library)});
    names.AddRow({"PFNC", Code(frame::PfncCode(format)), NamesText(format, frame::Scheme::Pfnc)});
    names.AddRow({"GStreamer", "", NamesText(format, frame::Scheme::GStreamer)});
    names.AddRow({"V4L2", Code(frame::Fourcc(format)), NamesText(format, frame::Scheme::V4l2)});
    names.AddRow({"OpenCV", "", NamesText(AsOpenCvSees(format), frame::Scheme::OpenCv)});
    names.AddRow({"this layer", "", NamesText(format, frame::Scheme::Frame)});
    text += names.Text();
    if (format.family == frame::Family::Bayer) {
        text += "\n" + OpenCvTrap(format);
    }
    return text;
}

}  // namespace

void AddExplainCommand(CLI::App& tool) {
    const auto name = std::make_shared<std::string>();
    CLI::App* command = tool.add_subcommand("explain", "Draw a pixel format and list its names and codes");
    command->add_option("FORMAT", *name, "A name in any scheme, or a code such as 0x010C0059")->required();
    command->footer(kFooter);
    command->callback([name] { PrintText(Explain(RequireFormatOrCode(*name), Paint::ForStandardOutput())); });
}

}  // namespace kvx::tool
