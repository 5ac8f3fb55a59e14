#include "quality/NoiseFigures.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <span>
#include <string>

#include "quality/FlatField.h"
#include "quality/SlantedEdge.h"

namespace kvx::quality {
namespace {

using Row = Table::value_type;

std::string GainName(Gain gain) {
    return gain ? fmt::format("{:g}", *gain) : "none";
}

/** Null if the divisor is 0. */
Row Ratio(double peer, double own) {
    return own == 0 ? Row() : Row(peer / own);
}

/** Adds the columns "title R", "title G" and "title B"; channel numbers start with blue. */
template <class ValueOf>
void AddChannels(Row& row, const std::string& title, const ValueOf& valueOf) {
    for (const int channel : {2, 1, 0}) row[title + " " + "BGR"[channel]] = valueOf(channel);
}

/** The values of the three channels in a row. */
std::array<Row, 3> Channels(const Row& row, const std::string& title) {
    return {row[title + " R"], row[title + " G"], row[title + " B"]};
}

/** Lowers `least` to the smallest of the values that are not null. */
void Lower(Row& least, std::span<const Row> values) {
    for (const Row& value : values)
        if (!value.is_null() && (least.is_null() || value < least)) least = value;
}

}  // namespace

Table FlatTable(const std::vector<Setting>& settings, const std::vector<Gain>& gains) {
    const Setting fast{.algorithm = AlgorithmByName("fast"), .seed = settings.front().seed, .params = PlainParams()};
    Table rows;
    for (const Gain gain : gains)
        for (const FlatField& field : AllFlatFields()) {
            const FlatFigures peer = MeasureFlat(field, fast.At(gain));
            for (const Setting& setting : settings) {
                const FlatFigures own = MeasureFlat(field, setting.At(gain));
                Row row{{"gain", GainName(gain)}, {"flat", field.name}, {"algorithm", setting.algorithm.name}};
                AddChannels(row, "sd", [&](int channel) { return own.deviation[channel]; });
                AddChannels(row, "less",
                            [&](int channel) { return Ratio(peer.deviation[channel], own.deviation[channel]); });
                AddChannels(row, "shift", [&](int channel) { return own.shift[channel]; });
                row["blotch"] = own.blotch;
                row["blotch less"] = Ratio(peer.blotch, own.blotch);
                rows.push_back(row);
            }
        }
    return rows;
}

Table EdgeTable(const std::vector<Setting>& settings, const std::vector<Gain>& gains) {
    Table rows;
    for (const Edge& edge : AllEdges())
        for (const Gain gain : gains)
            for (const Setting& setting : settings) {
                const EdgeFigures figures = MeasureEdge(edge, setting.At(gain));
                Row row{{"edge", edge.name}, {"gain", GainName(gain)}, {"algorithm", setting.algorithm.name}};
                AddChannels(row, "width", [&](int channel) { return figures.width[channel]; });
                AddChannels(row, "over", [&](int channel) { return figures.overshoot[channel]; });
                rows.push_back(row);
            }
    return rows;
}

Table SummaryOf(const Table& flats) {
    Table rows;
    for (const Row& flat : flats) {
        auto found = std::find_if(rows.begin(), rows.end(), [&flat](const Row& row) {
            return row["gain"] == flat["gain"] && row["algorithm"] == flat["algorithm"];
        });
        if (found == rows.end())
            found = rows.insert(rows.end(), Row{{"gain", flat["gain"]},
                                                {"algorithm", flat["algorithm"]},
                                                {"least less", nullptr},
                                                {"largest cast", 0.0},
                                                {"least blotch less", nullptr}});
        Lower((*found)["least less"], Channels(flat, "less"));
        Lower((*found)["least blotch less"], {&flat["blotch less"], 1});
        const auto shifts = Channels(flat, "shift");
        const auto [least, most] = std::minmax_element(shifts.begin(), shifts.end());
        (*found)["largest cast"] =
            std::max((*found)["largest cast"].get<double>(), most->get<double>() - least->get<double>());
    }
    return rows;
}

}  // namespace kvx::quality
