#include "pipeline/ToneScales.h"

#include "pipeline/MonotoneCubic.h"

namespace kvx {
namespace {

constexpr CurvePoint s_tonescale[] = {{0, 0},      {16, 2},     {64, 21},    {256, 71},  {512, 116},
                                      {1024, 174}, {2048, 228}, {3000, 247}, {4095, 255}};

// 512 and 3000 come from the curve's 8-bit form, 116 and 247 of 255: the middles of what those stand for at 12 bits.
constexpr CurvePoint s_tonescale12[] = {{0, 0},       {1, 5},       {64, 322},    {256, 1140}, {512, 1863},
                                        {1024, 2795}, {2048, 3648}, {3000, 3959}, {4095, 4095}};

}  // namespace

constexpr std::array<uint16_t, 4096> Tonescale12 = MonotoneCubic<4096>(s_tonescale);
constexpr std::array<uint16_t, 4096> Tonescale12Table12 = MonotoneCubic<4096>(s_tonescale12);

}  // namespace kvx
