// The demosaicer that drives the pipeline: what it feeds it, and what becomes of the result.
#include "demosaicers/denoising/TrueSenseKodak.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "KvxTrueSense/TrueSenseParams.h"
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
            const SlowPicture picture = Processed(run.Slow(), run.Params());
            ASSERT_EQ(run.Result(), run.Placed([&](size_t pixel, int shift) {
                Colour stored = picture.pixels[pixel];
                if (job.resultBytes == 2)
                    for (int& value : stored.value)
                        value = int(std::lround(value * double((1 << (12 + shift)) - 1) / 255));
                return stored;
            }));
        }
}

TEST(TrueSenseKodak, EveryParameterReachesThePipeline) {
    tagTrueSenseParam params = DefaultTrueSenseParams();
    double next = 100;
    for (const TrueSenseParamRow& row : s_trueSenseParams) {
        if (row.integer)
            params.*row.integer = int64_t(next++);
        else
            params.*row.real = next++;
    }
    params.panRadius2 = INT64_MAX;
    params.darkFloor = INT64_MIN;
    const ImageProcessParam p = PipelineParamOf({8, 12, 0, 0, 8, 12}, params);
    EXPECT_EQ(p.width, 8);
    EXPECT_EQ(p.height, 12);
    EXPECT_EQ(p.cfaPattern, 1);
    EXPECT_EQ(p.monoEnable, params.monoEnable);
    EXPECT_EQ(p.darkFloor, INT_MIN);
    EXPECT_EQ(p.panRadius[2], INT_MAX);
    // In the order of the record, which is that of the numbers.
    const auto expect = [](const float* first, const float* last, double from) {
        for (; first <= last; ++first) EXPECT_EQ(*first, float(from++));
    };
    expect(&p.redBalance, &p.ISOColorIntercept[4], params.redGain);
    expect(p.panSigma, p.panSigma + 2, params.panSigma0);
    expect(p.colorSigma, p.colorSigma + 2, params.colorSigma0);
    expect(p.colorMatrix, p.colorMatrix + 8, params.RR);
    expect(p.sharpness, p.sharpness + 3, params.sharpenParam);
    EXPECT_EQ(p.panRadius[0], params.panRadius0);
    EXPECT_EQ(p.panRadius[1], params.panRadius1);
    EXPECT_TRUE(std::equal(p.colorRadius, p.colorRadius + 3, &params.colorRadius0));
    params.sharpnessEnable = 0;
    const ImageProcessParam soft = PipelineParamOf({8, 12, 0, 0, 8, 12}, params);
    EXPECT_EQ(soft.sharpness[1], 0);
    EXPECT_TRUE(soft.sharpness[0] == p.sharpness[0] && std::equal(p.sharpness + 2, p.sharpness + 4, soft.sharpness + 2));
}

}  // namespace
}  // namespace kvx::test
