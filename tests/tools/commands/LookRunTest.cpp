#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "TemporaryDirectory.h"
#include "ToolRun.h"
#include "tools/files/PictureDecoder.h"
#include "tools/files/PictureEncoder.h"
#include "tools/scene/Scene.h"

namespace kvx::tool {
namespace {

nlohmann::json JsonOf(const std::vector<std::string>& arguments) {
    return nlohmann::json::parse(TextOf(arguments));
}

/** A directory with the demo scene and a mosaic of it. */
class LookRun : public testing::Test {
protected:
    void SetUp() override {
        m_scene = m_directory.Write("scene.png", EncodePicture(DrawScene(), PictureKind::Png));
        m_raw = m_directory.Path("a_768x512_BayerGB12p.raw");
        RunSuccessfully({"mosaic", m_scene, m_raw, "--format", "BayerGB12p"});
    }

    cv::Size SizeOf(const std::string& name) const {
        return DecodePicture(m_directory.Read(name), name).pixels.size();
    }

    TemporaryDirectory m_directory;
    std::string m_scene;
    std::string m_raw;
};

TEST_F(LookRun, InfoPrintsFactsAndTheirSources) {
    const nlohmann::json info = JsonOf({"info", m_raw, "--height", "512", "--json"});
    EXPECT_EQ(info["format"], "BayerGB12p");
    EXPECT_EQ(info["width"], 768);
    EXPECT_EQ(info["origins"]["height"], "options");
    EXPECT_EQ(info["origins"]["format"], "sidecar");  // which mosaic wrote
    EXPECT_EQ(info["largest"], 4095);
    EXPECT_EQ(info["likely_depth"], "12 bits");
    EXPECT_GT(info["clipped_share"], 0.01);
    // File names need not be UTF-8, JSON must.
    EXPECT_EQ(JsonOf({"info", m_directory.Write("\xFF", Bytes(4)), "--format", "Mono8", "--width", "2", "--height", "2",
                      "--json"})["largest"],
              0);
    ExpectRefusal(RunTool({"info", m_raw, "--height", "511"}), 4, {"589824 bytes", "511"});
}

TEST_F(LookRun, CompareMeasuresAndDraws) {
    const std::string sheet = m_directory.Path("sheet.png");
    const nlohmann::json result =
        JsonOf({"compare", m_raw, "--reference", m_scene, "--output", sheet, "--crop", "10,20,64,32", "--json"});
    ASSERT_EQ(result["algorithms"].size(), 5u);
    double best = 0;
    for (const auto& row : result["algorithms"]) {
        EXPECT_GT(row["seconds"], 0);
        EXPECT_GT(row["psnr"], 15);
        best = std::max(best, row["psnr"].get<double>());
    }
    EXPECT_EQ(best, result["algorithms"][3]["psnr"]);  // fine
    EXPECT_GT(SizeOf("sheet.png").width, 4 * 448);     // the reference and the algorithms
    ExpectRefusal(RunTool({"compare", m_raw, "--crop", "700,0,69,1", "--output", sheet}), 4, {"--crop", "768 x 512"});
    ExpectRefusal(RunTool({"compare", m_raw, "--reference", sheet, "--output", m_directory.Path("b.png")}), 4,
                  {"reference", "768x512"});
}

TEST_F(LookRun, GuessDrawsASheet) {
    const std::string sheet = m_directory.Path("sheet.png");
    const std::string unnamed = m_directory.Write("x", m_directory.Read("a_768x512_BayerGB12p.raw"));
    const nlohmann::json result = JsonOf({"guess", unnamed, "--output", sheet, "--json"});
    const nlohmann::json first = result["ranking"][0];
    EXPECT_TRUE(first["format"] == "BayerGB12p" || first["format"] == "BayerGR12p") << first;
    EXPECT_EQ(first["width"], 768);
    EXPECT_GT(SizeOf("sheet.png").width, 4 * 384);
    const std::string grey = m_directory.Path("x.pgm");  // its header contains the size
    RunSuccessfully({"unpack", m_raw, grey});
    EXPECT_EQ(JsonOf({"guess", grey, "--output", sheet, "--json"})["ranking"][0]["score"], first["score"]);
    ExpectRefusal(RunTool({"guess", m_scene, "--output", sheet}), 3, {"colour picture"});
    ExpectRefusal(RunTool({"guess", m_directory.Write("y", Bytes(1009)), "--output", sheet}), 4, {"--width"});
}

TEST(BenchRun, MeasuresWhatIsAskedFor) {
    const nlohmann::json result = JsonOf({"bench", "--format", "BayerRG12p", "--format", "Mono8", "--size", "64x48",
                                          "--algorithm", "ipp", "--milliseconds", "1", "--json"});
    ASSERT_EQ(result["results"].size(), 4u);
    EXPECT_EQ(result["results"][0]["algorithm"], "ipp");
    for (size_t i = 0; i < 4; ++i) EXPECT_EQ(result["results"][i]["finished"], i % 2 == 0);
    EXPECT_NEAR(result["results"][0]["bytes_per_second"].get<double>(),
                1.5 * result["results"][0]["pixels_per_second"].get<double>(), 1);
    ExpectRefusal(RunTool({"bench", "--algorithm", "magic"}), 2, {"magic"});
    ExpectRefusal(RunTool({"bench", "--format", "RGB8"}), 2, {"RGB8"});
}

}  // namespace
}  // namespace kvx::tool
