#include "tools/look/Guess.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "tools/frames/Mosaic.h"

namespace kvx::tool {
namespace {

/** Soft spots of a few colours (blue, green, red) on grey. */
Picture Spots(const std::vector<cv::Scalar>& colours) {
    cv::Mat pixels(192, 256, CV_8UC3, cv::Scalar::all(130));
    cv::RNG random(7);
    for (int spot = 0; spot < 60; ++spot) {
        const cv::Point middle(random.uniform(0, pixels.cols), random.uniform(0, pixels.rows));
        cv::circle(pixels, middle, random.uniform(6, 24), colours[spot % colours.size()], cv::FILLED, cv::LINE_AA);
    }
    return {pixels, 255};
}

const std::vector<cv::Scalar> kWarm = {{30, 80, 210}, {50, 150, 220}, {110, 150, 200}, {60, 140, 70}, {210, 210, 200}};

Guesses GuessMosaic(const Picture& picture, const frame::Format& format) {
    const Bytes bytes =
        EncodePacked(MakeMosaic(picture, frame::Unpacked(format)).samples, format, frame::RowPadding::Line);
    return RankFormats(FindLayouts(bytes, {}, 4));
}

TEST(Guess, FindsEveryMosaicOfAWarmScene) {
    const Picture scene = Spots(kWarm);
    for (const auto family : {frame::Family::Bayer, frame::Family::TrueSense}) {
        for (uint8_t phase = 0; phase < (family == frame::Family::Bayer ? 4 : 16); ++phase) {
            const frame::Format format{family, 12, frame::Layout::Pfnc, phase};
            const Guesses guesses = GuessMosaic(scene, format);
            const Guess& first = guesses.ranking[0];
            EXPECT_EQ(frame::Name(first.format), frame::Name(format));
            EXPECT_EQ(first.samples.size(), scene.pixels.size());
            EXPECT_TRUE(guesses.isPatternKnown);
            // Exchanging red and blue scores the same: that is all that is known.
            EXPECT_EQ(guesses.ranking[1].score, first.score);
            EXPECT_EQ(guesses.ranking[1].warmth, -first.warmth);
        }
    }
}

TEST(Guess, FindsEveryLayoutAndSize) {
    const Picture landscape = Spots(kWarm);
    Picture portrait = landscape;
    cv::rotate(landscape.pixels, portrait.pixels, cv::ROTATE_90_CLOCKWISE);
    for (const char* name :
         {"BayerRG8", "BayerGR8", "BayerGR10", "BayerGB16", "BayerBG12be", "BayerRG12msb", "BayerGR10p",
          "BayerGB10Packed", "BayerBG12Packed", "BayerRG10mipi", "BayerGR12mipi", "BayerGB14mipi", "BayerBG14p"}) {
        const Picture& scene = frame::FormatByName(name).bits == 8 ? portrait : landscape;
        const Guess first = GuessMosaic(scene, frame::FormatByName(name)).ranking[0];
        EXPECT_EQ(frame::Name(first.format), name);
        EXPECT_EQ(first.samples.size(), scene.pixels.size()) << name;
    }
}

TEST(Guess, AGreySceneRevealsNoPattern) {
    const Picture grey = Spots({cv::Scalar::all(40), cv::Scalar::all(220)});
    EXPECT_FALSE(GuessMosaic(grey, frame::FormatByName("BayerRG8")).isPatternKnown);
    EXPECT_EQ(GuessMosaic(grey, frame::FormatByName("Mono8")).ranking[0].format.family, frame::Family::Mono);
}

}  // namespace
}  // namespace kvx::tool
