#include "tools/commands/Commands.h"

#include <cfloat>
#include <memory>
#include <nlohmann/json.hpp>

#include "tools/console/Arguments.h"
#include "tools/console/Console.h"
#include "tools/console/TextTable.h"
#include "tools/frames/FrameConversion.h"

namespace kvx::tool {
namespace {

using Json = nlohmann::ordered_json;

std::string TypeText(const _KvxStParam& parameter) {
    return parameter.type == KvxParamType_Float ? "float" : "integer";
}

std::string AccessText(const _KvxStParam& parameter) {
    const bool canRead = (parameter.flags & KvxParamAccess_Read) != 0;
    const bool canWrite = (parameter.flags & KvxParamAccess_Write) != 0;
    return canRead && canWrite ? "read/write" : canWrite ? "write" : canRead ? "read" : "none";
}

Json ValueJson(const _KvxStParam& parameter, const _KvxParamValue& value) {
    return parameter.type == KvxParamType_Float ? Json(value.asFloat) : Json(value.asInt);
}

/** Null where the declared minimum stands for "no lower bound". */
Json MinimumJson(const _KvxStParam& parameter) {
    const bool isUnbounded = parameter.type == KvxParamType_Float && parameter.minValue.asFloat == DBL_MIN;
    return isUnbounded ? Json(nullptr) : ValueJson(parameter, parameter.minValue);
}

Json ParameterJson(const frame::Converter& converter) {
    Json rows = Json::array();
    for (const _KvxStParam& parameter : converter.Parameters()) {
        rows.push_back({{"name", parameter.name},
                        {"type", TypeText(parameter)},
                        {"default", ValueJson(parameter, parameter.defaultValue)},
                        {"minimum", MinimumJson(parameter)},
                        {"maximum", ValueJson(parameter, parameter.maxValue)},
                        {"value", Json::parse(converter.Parameter(parameter.name))},
                        {"access", AccessText(parameter)}});
    }
    return rows;
}

std::string CellText(const Json& value) {
    return value.is_null() ? "-" : value.is_string() ? value.get<std::string>() : value.dump();
}

std::string ParameterTable(const Json& rows) {
    TextTable table({"name", "type", "default", "minimum", "maximum", "value", "access"});
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
    command->footer("A minimum of - (null in JSON) means that there is no lower bound.");
    command->callback([component, asJson] { PrintParameters(*component, *asJson); });
}

}  // namespace kvx::tool
