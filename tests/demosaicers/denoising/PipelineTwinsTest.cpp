// The noise-reducing demosaicers give the samples of plain forms, whatever they run on.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

#include "KvxTrueSense/TrueSenseParams.h"
#include "demosaicers/denoising/SlowPipeline.h"
#include "demosaicers/denoising/TrueSenseKodak.h"
#include "demosaicers/denoising/TrueSenseKodakLike.h"
#include "demosaicers/denoising/TrueSenseSimple.h"
#include "support/InstructionSets.h"
#include "support/TrueSenseJobs.h"

namespace kvx::test {
namespace {

using Params = tagTrueSenseParam;

/** Random parameters, some within reason and some far beyond it. */
void DrawParams(std::mt19937& random, Params& params) {
    const auto draw = [&](unsigned end) { return static_cast<int>(random() % end); };
    const auto between = [&](double low, double high) { return low + (high - low) * draw(10001) / 10000; };
    const auto drawAll = [&](std::initializer_list<double*> values, double low, double high) {
        for (double* value : values) *value = between(low, high);
    };
    if (draw(2)) drawAll({&params.redGain, &params.greenGain, &params.blueGain, &params.panGain}, .5, 3);
    if (draw(3) == 0) params.globalGain = between(.5, 4);
    if (draw(3) == 0) params.darkFloor = draw(300);
    params.analogGain = between(1, 45);
    for (int64_t* radius : {&params.panRadius0, &params.panRadius1, &params.panRadius2, &params.colorRadius0,
                            &params.colorRadius1, &params.colorRadius2})
        if (draw(2)) *radius = draw(12) ? draw(4) : 12 + draw(8);
    if (draw(8) == 0)
        params.panRadius0 = params.panRadius1 = params.panRadius2 = params.colorRadius0 = params.colorRadius1 =
            params.colorRadius2 = 0;
    for (double* sigma : {&params.panSigma0, &params.panSigma1, &params.panSigma2, &params.colorSigma0,
                          &params.colorSigma1, &params.colorSigma2})
        if (draw(2)) *sigma = draw(4) ? between(0, 5) : 0;
    if (draw(2)) drawAll({&params.sharpenParam, &params.maxSharpen, &params.highLumaNoise}, 0, draw(2) ? 60 : 3);
    if (draw(2)) params.lowLumaNoise = between(-1, 2);
    params.sharpnessEnable = draw(4) != 0;
    params.monoEnable = draw(5) == 0;
    params.impulseFilterEnable = draw(2);
    if (draw(2)) params.toneTable = nullptr;
    if (draw(4) != 0) return;

    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double wild[] = {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity, -1, 0, 1e30, 1e-30};
    for (int i = 0; i < 4; ++i) {
        const TrueSenseParamRow& row = s_trueSenseParams[draw(std::size(s_trueSenseParams))];
        if (row.real) params.*row.real = wild[draw(std::size(wild))];
    }
    constexpr int64_t wildWords[] = {INT64_MIN, INT_MIN, -1, 70000, INT_MAX, INT64_MAX};
    int64_t Params::*const words[] = {&Params::darkFloor, &Params::panRadius0, &Params::colorRadius2,
                                      &Params::impulseFilterEnable, &Params::monoEnable};
    params.*words[draw(std::size(words))] = wildWords[draw(std::size(wildWords))];
}

TrueSenseJob DrawPipelineJob(int width, int height, unsigned grid, std::mt19937& random) {
    TrueSenseJob job = DrawJob(width, height, grid, random);
    if (random() % 2) job.content = Content::Scene;
    if (random() % 8 == 0) job.bandRows = 64;
    return job;
}

/** With parameters that follow from the job. */
TrueSenseRun MakeRun(const TrueSenseJob& job) {
    TrueSenseRun run(job);
    std::mt19937 random(job.seed + 2);
    DrawParams(random, run.Params());
    return run;
}

/** Sizes of all kinds, all grids. */
template <class Check>
void ForManyJobs(unsigned seed, int draws, const Check& check) {
    std::mt19937 random(seed);
    unsigned grid = seed;
    const auto checkSize = [&](int width, int height) {
        const TrueSenseJob job = DrawPipelineJob(width, height, grid++ % 16, random);
        SCOPED_TRACE(testing::Message() << job);
        check(job);
    };
    for (int width = 1; width <= 13; ++width)
        for (int height = 1; height <= 13; ++height)
            for (int draw = 0; draw < draws && !testing::Test::HasFatalFailure(); ++draw) checkSize(width, height);
    constexpr std::pair<int, int> sizes[] = {{64, 130}, {131, 97}, {517, 40}, {1025, 20}, {40, 3}, {5, 300}, {90, 75}};
    for (const auto& [width, height] : sizes)
        for (int draw = 0; draw < 4 * draws && !testing::Test::HasFatalFailure(); ++draw) checkSize(width, height);
}

/** On every instruction set the pixels that `expectedOf(plain run)` gives. */
template <template <class> class Demosaicer, class ExpectedOf>
void ExpectPlainForm(unsigned seed, int draws, const ExpectedOf& expectedOf) {
    ForManyJobs(seed, draws, [&](const TrueSenseJob& job) {
        TrueSenseRun plain = MakeRun(job);
        const std::vector<uint8_t> expected = expectedOf(plain, job.resultBytes == 2);
        ForEachInstructionSet([&] {
            TrueSenseRun run = MakeRun(job);
            ASSERT_EQ(run.Convert<Demosaicer>(), 0);
            ASSERT_TRUE(run.Result() == expected);
        });
    });
}

/** Its words are the bytes, on the scale of the words. */
TEST(PipelineTwins, KodakEqualsThePlainFormInBytes) {
    ExpectPlainForm<TrueSenseKodak>(11, 2, [](TrueSenseRun& plain, bool isDeep) {
        plain.Params().impulseFilterEnable = 1;  // which it does not look at
        const SlowPicture picture = SlowKodakLike(plain.Slow(4), plain.Params(), false);
        return plain.Placed([&](size_t i, int shift) {
            Colour colour = picture.pixels[i];
            for (int& value : colour.value)
                if (isDeep) value = int(std::lround(value * double((1 << (12 + shift)) - 1) / 255));
            return colour;
        });
    });
}

TEST(PipelineTwins, KodakLikeEqualsItsPlainForm) {
    ExpectPlainForm<TrueSenseKodakLike>(12, 3, [](TrueSenseRun& plain, bool isDeep) {
        const SlowPicture picture = SlowKodakLike(plain.Slow(4), plain.Params(), isDeep);
        return plain.Placed([&](size_t i, int shift) {
            Colour colour = picture.pixels[i];
            for (int& value : colour.value)
                if (isDeep) value = shift < 0 ? value >> -shift : value << shift;
            return colour;
        });
    });
}

TEST(PipelineTwins, SimpleEqualsItsPlainForm) {
    ExpectPlainForm<TrueSenseSimple>(
        13, 2, [](TrueSenseRun& plain, bool) { return plain.Expected(SlowSimple(plain.Slow(4), plain.Params())); });
}

}  // namespace
}  // namespace kvx::test
