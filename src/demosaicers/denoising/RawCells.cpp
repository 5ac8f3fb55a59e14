#include "demosaicers/denoising/RawCells.h"

#include "demosaicers/frame/TrueSenseTile.h"
#include "pipeline/GammaCodes.h"
#include "pipeline/RawSamples.h"

namespace kvx {
namespace {

void CalculateDarkFloorSubtract(int32_t darkFloor, size_t count, uint16_t* samples) {
    for (size_t i = 0; i < count; ++i) samples[i] = static_cast<uint16_t>(SubtractedFloor(samples[i], darkFloor));
}

int32_t CalculateGlobalGain(int32_t sample, float gain) {
    return gain > 1.0F ? Gained(sample, gain) : sample;
}

}  // namespace

void MakeRawTables(const ImageProcessParam& param, RawTables& tables) noexcept {
    tables.darkFloor = param.darkFloor;
    for (int32_t i = 0; i < RawTables::kValues; ++i) {
        const int32_t sample = CalculateGlobalGain(i, param.globalGain);
        tables.pan[i] = static_cast<uint16_t>(Linear12toGamma10[Balanced(sample, param.panBalance)]);
        tables.red[i] = static_cast<uint16_t>(Balanced(sample, param.redBalance));
        tables.green[i] = static_cast<uint16_t>(Balanced(sample, param.greenBalance));
        tables.blue[i] = static_cast<uint16_t>(Balanced(sample, param.blueBalance));
    }
}

void TakeCells(const RawTables& tables, int row, uint16_t* upper, uint16_t* lower, size_t cells, int16_t* pan0,
               int16_t* pan1, int16_t* colour) noexcept {
    CalculateDarkFloorSubtract(tables.darkFloor, 2 * cells, upper);
    CalculateDarkFloorSubtract(tables.darkFloor, 2 * cells, lower);
    const auto balancedOf = [&](char kind) -> const RawTables::Table& {
        return kind == 'R' ? tables.red : kind == 'G' ? tables.green : tables.blue;
    };
    const RawTables::Table &first = balancedOf(ColourOfCell(row / 2, 0)),
                           &second = balancedOf(ColourOfCell(row / 2, 1));
    const auto takeCell = [&](size_t k, const RawTables::Table& balanced) {
        pan0[k] = static_cast<int16_t>(tables.pan[upper[2 * k]]);
        pan1[k] = static_cast<int16_t>(tables.pan[lower[2 * k + 1]]);
        colour[k] = static_cast<int16_t>(CodeOfMean(balanced[upper[2 * k + 1]], balanced[lower[2 * k]]));
    };
    for (size_t k = 0; k < cells; k += 2) {
        takeCell(k, first);
        takeCell(k + 1, second);
    }
}

}  // namespace kvx
