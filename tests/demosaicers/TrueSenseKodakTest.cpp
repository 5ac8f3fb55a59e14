// The demosaicer that drives the pipeline: what it feeds it, and what becomes of the result.
#include "demosaicers/TrueSenseKodak.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "KvxTrueSense/TrueSenseParams.h"
#include "pipeline/ToneScales.h"
#include "support/PipelineFrame.h"
#include "support/TrueSenseJobs.h"

namespace kvx::test {
namespace {

/** The pipeline's picture of a source, padded by hand, in the source's orientation. */
SlowPicture Processed(const SlowSource& source, const tagTrueSenseParam& params) {
    const int rowPhase = int(source.grid) / 4, columnPhase = int(source.grid) % 4;
    const int width = (source.width + columnPhase + 3) / 4 * 4, height = (source.height + rowPhase + 3) / 4 * 4;
    const auto readOut = [&](int row, int column) {  // the place in the source
        if (source.verMirrored) row = source.height - 1 - row;
        if (source.horMirrored) column = source.width - 1 - column;
        return size_t(row) * source.width + column;
    };
    const auto inside = [](int place, int length) {
        return place < 0 ? place + 4 : place < length ? place : place - 4;
    };
    PipelineFrame frame(width, height);
    frame.param = PipelineParamOf({width, height, columnPhase, rowPhase, source.width, source.height}, params);
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column) {
            const int sample = source.samples[readOut(inside(row - rowPhase, source.height),
                                                      inside(column - columnPhase, source.width))];
            const int scaled = source.depth <= 12 ? sample << (12 - source.depth) : sample >> (source.depth - 12);
            frame.input[size_t(row) * width + column] = static_cast<uint16_t>(scaled);
        }
    std::vector<uint8_t> rgb(size_t(3) * width * height);
    std::vector<uint16_t> tone(Tonescale12.begin(), Tonescale12.end());
    if (params.toneTable)
        for (size_t i = 0; i < tone.size(); ++i) tone[i] = std::min<uint16_t>(params.toneTable[i] / 16, 255);
    frame.param.input = frame.input.data();
    frame.param.output = rgb.data();
    frame.param.toneScale = tone.data();
    EXPECT_EQ(frame.Run(), 0);
    SlowPicture picture{source.width, source.height, std::vector<Colour>(source.samples.size())};
    for (int row = 0; row < source.height; ++row)
        for (int column = 0; column < source.width; ++column) {
            const uint8_t* pixel = &rgb[size_t(3) * ((row + rowPhase) * width + column + columnPhase)];
            picture.pixels[readOut(row, column)] = {{pixel[0], pixel[1], pixel[2]}};
        }
    return picture;
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
    EXPECT_TRUE(std::ranges::all_of(soft.sharpness, [](float value) { return value == 0; }));
}

}  // namespace
}  // namespace kvx::test
