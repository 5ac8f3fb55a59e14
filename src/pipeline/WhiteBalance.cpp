#include "pipeline/CfaTables.h"
#include "pipeline/LogText.h"
#include "pipeline/RawSamples.h"

int32_t Alg_WhiteBalance(const uint16_t* raw, int32_t width, int32_t height, int32_t cfaPattern, float redBalance,
                         float greenBalance, float blueBalance, float panBalance, uint16_t* pan0, uint16_t* pan1,
                         uint16_t* colour0, uint16_t* colour1, LogText_t* log) noexcept {
    using namespace kvx;
    if (!IsCfaPattern(cfaPattern)) return Fail(log, kPatternError);
    const SiteTable& sites = *s_siteTables[cfaPattern];
    const struct {
        float gain;
        uint16_t* plane;
    } targets[] = {{panBalance, pan0},      {panBalance, pan1},      {redBalance, colour0},  {redBalance, colour1},
                   {greenBalance, colour0}, {greenBalance, colour1}, {blueBalance, colour0}, {blueBalance, colour1}};
    for (int32_t row = 0; row < height / 2 * 2; ++row)
        for (int32_t column = 0; column < width / 2 * 2; ++column) {
            const int32_t code = sites[row % 4][column % 4];
            if (code < kPanEven || code > kBlueOdd) return Fail(log, kColourError);
            const auto& [gain, plane] = targets[code - kPanEven];
            const int64_t cell = int64_t{row / 2} * (width / 2) + column / 2;
            plane[cell] = static_cast<uint16_t>(Balanced(raw[int64_t{row} * width + column], gain));
        }
    return kStageSuccess;
}
