#include "tools/commands/Commands.h"

#include <fmt/format.h>

#include <memory>
#include <nlohmann/json.hpp>

#include "tools/console/Arguments.h"
#include "tools/console/Console.h"
#include "tools/console/TextTable.h"
#include "tools/frames/Formats.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter = R"(source: convert reads it, mosaic and pack make it; destination: convert makes it
(--to). Options also take the names of PFNC, GStreamer, V4L2 and OpenCV, and names for
mosaics of any phase and layout, such as CFA_WBWG_BWGW_WGWR_GWRW_12p.)";

std::string CodeText(const PixelFormat& format) {
    return fmt::format("0x{:08X}", format.pixelType);
}

/** Whether the predicate holds for a row; never for a format that frames and pictures do not use. */
template <typename Predicate>
bool Is(const Predicate& predicate, const PixelFormat& format) {
    const std::optional<frame::Format> known = frame::FormatByLibraryCode(format.pixelType);
    return known && predicate(*known);
}

std::string FormatTable() {
    TextTable table({"name", "code", "components", "bits", "convert"});
    for (const PixelFormat* format : AllFormats()) {
        const char* use = Is(frame::IsSource, *format)        ? "source"
                          : Is(IsConvertDestination, *format) ? "destination"
                                                              : "-";
        table.AddRow(
            {format->name, CodeText(*format), format->components, std::to_string(format->bitsPerComponent), use});
    }
    return table.Text();
}

std::string FormatJson() {
    auto rows = nlohmann::ordered_json::array();
    for (const PixelFormat* format : AllFormats()) {
        rows.push_back({{"name", format->name},
                        {"code", CodeText(*format)},
                        {"components", format->components},
                        {"bits", format->bitsPerComponent},
                        {"source", Is(frame::IsSource, *format)},
                        {"destination", Is(IsConvertDestination, *format)}});
    }
    return JsonText(rows);
}

}  // namespace

void AddFormatsCommand(CLI::App& tool) {
    const auto asJson = std::make_shared<bool>(false);
    CLI::App* command = tool.add_subcommand("formats", "List the pixel formats");
    AddJsonFlag(*command, *asJson);
    command->footer(kFooter);
    command->callback([asJson] { PrintText(*asJson ? FormatJson() : FormatTable()); });
}

}  // namespace kvx::tool
