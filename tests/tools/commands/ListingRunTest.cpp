#include <gtest/gtest.h>

#include <cfloat>

#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "TemporaryDirectory.h"
#include "ToolRun.h"
#include "tools/frames/Formats.h"

namespace kvx::tool {
namespace {

std::vector<std::string> LinesOf(const std::vector<std::string>& arguments) {
    std::istringstream text(TextOf(arguments));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST(ListingRun, FormatsAsTableAndJson) {
    const std::vector<std::string> lines = LinesOf({"formats"});
    ASSERT_EQ(lines.size(), 134u);
    const size_t codeColumn = lines[0].find("code");
    const nlohmann::json rows = nlohmann::json::parse(TextOf({"formats", "--json"}));
    ASSERT_EQ(rows.size(), 133u);
    for (size_t index = 0; index < rows.size(); ++index) {
        const std::string name = rows[index]["name"];
        const std::string code = rows[index]["code"];
        EXPECT_EQ(lines[index + 1].find(name), 0u) << name;
        EXPECT_EQ(lines[index + 1].find(code), codeColumn) << name;
        const std::optional<frame::Format> format = frame::FindFormat(name);
        EXPECT_TRUE(!format || frame::LibraryCode(*format) == std::stoul(code, nullptr, 16)) << name;
    }
    EXPECT_EQ(rows[41], (nlohmann::json{{"name", "BayerRG14"},
                                        {"code", "0x0310042A"},
                                        {"components", "R G B G2"},
                                        {"bits", 14},
                                        {"source", true},
                                        {"destination", false}}));
}

TEST(ListingRun, Parameters) {
    const nlohmann::json trueSense = nlohmann::json::parse(TextOf({"params", "truesense", "--json"}));
    ASSERT_EQ(trueSense.size(), 66u);
    EXPECT_EQ(trueSense[10],
              (nlohmann::json{{"name", "redGain"},
                              {"type", "float"},
                              {"default", 1.0},
                              {"minimum", nullptr},
                              {"maximum", nullptr},
                              {"value", 1.0},
                              {"access", "read/write"},
                              {"description", "factor of the red samples (noise-reducing algorithms)"}}));
    for (const nlohmann::json& row : trueSense) EXPECT_NE(row["description"], "") << row["name"];
    EXPECT_EQ(LinesOf({"params"})[2], "NoRealloc     integer  0        0        1        0      read/write  no effect");
}

TEST(DemoRun, WritesWhatItListsAndConvertMakesTheSame) {
    const TemporaryDirectory directory;
    const std::vector<std::string> listed = LinesOf({"demo", directory.Path("demo")});
    std::set<std::string> written;
    for (const auto& entry : std::filesystem::directory_iterator(directory.Path("demo"))) {
        written.insert(entry.path().string());
    }
    EXPECT_EQ(std::set<std::string>(listed.begin(), listed.end()), written);
    EXPECT_EQ(written.size(), 33u);

    const std::string raw = directory.Path("demo/scene_768x512_BayerRG12.raw");
    RunSuccessfully({"convert", raw, directory.Path("again.png"), "--algorithm", "edge-aware"});
    EXPECT_EQ(directory.Read("again.png"), directory.Read("demo/scene_BayerRG12_edge-aware.png"));
}

TEST(MosaicRun, WritesSamplesInAnyLayoutAndPgmWithTheDepthsMaximum) {
    const TemporaryDirectory directory;
    const std::string picture =
        directory.Write("p.ppm", {'P', '3', ' ', '1', ' ', '1', ' ', '3', ' ', '0', ' ', '3', ' ', '1'});
    RunSuccessfully({"mosaic", picture, directory.Path("a.raw"), "--format", "BayerGR10"});
    EXPECT_EQ(directory.Read("a.raw"), (Bytes{0xFF, 0x03}));
    RunSuccessfully({"mosaic", picture, directory.Path("a.PGM"), "--format", "BayerGR10", "--no-sidecar"});
    const std::string header = "P5\n1 1\n1023\n\x03\xFF";
    EXPECT_EQ(directory.Read("a.PGM"), Bytes(header.begin(), header.end()));
    const std::pair<const char*, Bytes> samples[] = {
        {"Mono8", {113}}, {"BayerRG8", {0}}, {"BayerBG8", {85}}, {"BayerGR12msb", {0xF0, 0xFF}}};
    for (const auto& [format, sample] : samples) {
        EXPECT_EQ(RunSuccessfully({"mosaic", picture, "-", "--format", format}).standardOutput, sample) << format;
    }
    EXPECT_EQ(directory.Entries(), (std::set<std::string>{"a.PGM", "a.raw", "a.raw.json", "p.ppm"}));
}

}  // namespace
}  // namespace kvx::tool
