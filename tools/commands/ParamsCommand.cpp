#include "tools/commands/Commands.h"

#include <memory>
#include <nlohmann/json.hpp>

#include "tools/console/Arguments.h"
#include "tools/console/Console.h"
#include "tools/console/TextTable.h"
#include "tools/convert/ParameterJson.h"
#include "tools/frames/FrameConversion.h"

namespace kvx::tool {
namespace {

using Json = nlohmann::ordered_json;

std::string CellText(const Json& value) {
    return value.is_null() ? "-" : value.is_string() ? value.get<std::string>() : value.dump();
}

std::string ParameterTable(const Json& rows) {
    TextTable table({"name", "type", "default", "minimum", "maximum", "value", "access", "description"});
    for (const Json& row : rows) {
        std::vector<std::string> cells;
        for (const Json& value : row) {
            cells.push_back(CellText(value));
        }
        table.AddRow(std::move(cells));
    }
    return table.Text();
}

void PrintParameters(const std::string& componentName, bool asJson) {
    const Json rows = ParameterJson(frame::Converter(FamilyNamed(componentName)));
    PrintText(asJson ? JsonText(rows) : ParameterTable(rows));
}

}  // namespace

void AddParamsCommand(CLI::App& tool) {
    const auto component = std::make_shared<std::string>("bayer");
    const auto asJson = std::make_shared<bool>(false);
    CLI::App* command = tool.add_subcommand("params", "List the parameters that convert --set changes");
    command->add_option("COMPONENT", *component, "bayer (the default) or truesense");
    AddJsonFlag(*command, *asJson);
    command->footer("A minimum or maximum of - (null in JSON) means that there is none.");
    command->callback([component, asJson] { PrintParameters(*component, *asJson); });
}

}  // namespace kvx::tool
