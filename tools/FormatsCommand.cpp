#include "tools/FormatsCommand.h"

#include <fmt/format.h>

#include <memory>
#include <nlohmann/json.hpp>

#include "tools/Console.h"
#include "tools/Formats.h"
#include "tools/TextTable.h"

namespace kvx::tool {
namespace {

constexpr const char* kFooter = R"(source: convert reads it; destination: convert makes it (--to). mosaic makes every
unpacked mono, Bayer and TrueSense format.)";

std::string CodeText(const PixelFormat& format) {
    return fmt::format("0x{:08X}", format.pixelType);
}

std::string FormatTable() {
    TextTable table({"name", "code", "components", "bits", "convert"});
    for (const PixelFormat* format : AllFormats()) {
        const char* use = IsConvertSource(*format) ? "source" : IsConvertDestination(*format) ? "destination" : "-";
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
                        {"source", IsConvertSource(*format)},
                        {"destination", IsConvertDestination(*format)}});
    }
    return rows.dump(2) + "\n";
}

}  // namespace

void AddFormatsCommand(CLI::App& tool) {
    const auto asJson = std::make_shared<bool>(false);
    CLI::App* command = tool.add_subcommand("formats", "List the pixel formats");
    command->add_flag("--json", *asJson, "Print JSON instead of a table");
    command->footer(kFooter);
    command->callback([asJson] { PrintText(*asJson ? FormatJson() : FormatTable()); });
}

}  // namespace kvx::tool
