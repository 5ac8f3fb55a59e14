// The demosaicer that drives the pipeline: its input, and what it writes.
#include "demosaicers/denoising/TrueSenseKodak.h"

#include <gtest/gtest.h>

#include <cmath>

#include "pipeline/ToneScales.h"
#include "support/PipelineFrame.h"
#include "support/TrueSenseJobs.h"

namespace kvx::test {
namespace {

/** The pipeline's picture of a source, in the source's orientation. */
SlowPicture Processed(const SlowSource& source, const tagTrueSenseParam& params) {
    int width = 0, height = 0;
    const std::vector<uint16_t> mosaic = SlowMosaic(source, width, height);
    std::vector<uint8_t> rgb(3 * mosaic.size());
    std::vector<uint16_t> tone(Tonescale12.begin(), Tonescale12.end());
    if (params.toneTable)
        for (size_t i = 0; i < tone.size(); ++i) tone[i] = std::min<uint16_t>(params.toneTable[i] / 16, 255);
    PipelineFrame frame(width, height);
    frame.param = PipelineParamOf({width, height, 0, 0, width, height}, params);
    frame.param.input = mosaic.data();
    frame.param.output = rgb.data();
    frame.param.toneScale = tone.data();
    EXPECT_EQ(frame.Run(), 0);
    return SlowRegion(source, [&](int row, int column) {
        const uint8_t* pixel = &rgb[3 * (size_t(row) * width + column)];
        return Colour{pixel[0], pixel[1], pixel[2]};
    });
}

TEST(TrueSenseKodak, GivesThePipelinesPictureOfEverySource) {
    TrueSenseKodak<uint8_t> bytes;  // kept from frame to frame, as a component does
    TrueSenseKodak<uint16_t> words;
    std::mt19937 random(7);
    constexpr struct { int width, height; } sizes[] = {{4, 4}, {5, 7}, {21, 14}, {21, 14}, {36, 9}};
    for (const auto& [width, height] : sizes)
        for (unsigned grid = 0; grid < 16; ++grid) {
            TrueSenseJob job = DrawJob(width, height, grid, random);
            if (job.content > Content::Extremes) job.content = Content::Noise;
            SCOPED_TRACE(testing::Message() << job);
            TrueSenseRun run(job);
            ASSERT_EQ(job.sourceBytes == 1 ? run.Convert(&bytes) : run.Convert(&words), 0);
            const SlowPicture picture = Processed(run.Slow(4), run.Params());
            ASSERT_EQ(run.Result(), run.Placed([&](size_t pixel, int shift) {
                Colour stored = picture.pixels[pixel];
                if (job.resultBytes == 2)
                    for (int& value : stored.value)
                        value = int(std::lround(value * double((1 << (12 + shift)) - 1) / 255));
                return stored;
            }));
        }
}

}  // namespace
}  // namespace kvx::test
