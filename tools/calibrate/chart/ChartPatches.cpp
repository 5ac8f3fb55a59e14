#include "tools/calibrate/chart/ChartPatches.h"

namespace kvx::tool {
namespace {

struct PublishedPatch {
    const char* name;
    Lab d50;
};

/**
 * CIE L*a*b*, D50, 2 degrees, as X-Rite publishes them for ColorChecker Classic charts made since November 2014
 * (measured with an i1Pro 2, M0). Older charts differ by 0.85 on average (CIEDE2000).
 */
constexpr std::array<PublishedPatch, kChartPatches> kPublished = {{
    {"dark skin", {37.54, 14.37, 14.92}},     {"light skin", {64.66, 19.27, 17.50}},
    {"blue sky", {49.32, -3.82, -22.54}},     {"foliage", {43.46, -12.74, 22.72}},
    {"blue flower", {54.94, 9.61, -24.79}},   {"bluish green", {70.48, -32.26, -0.37}},
    {"orange", {62.73, 35.83, 56.50}},        {"purplish blue", {39.43, 10.75, -45.17}},
    {"moderate red", {50.57, 48.64, 16.67}},  {"purple", {30.10, 22.54, -20.87}},
    {"yellow green", {71.77, -24.13, 58.19}}, {"orange yellow", {71.51, 18.24, 67.37}},
    {"blue", {28.37, 15.42, -49.80}},         {"green", {54.38, -39.72, 32.27}},
    {"red", {42.43, 51.05, 28.62}},           {"yellow", {81.80, 2.67, 80.41}},
    {"magenta", {50.63, 51.28, -14.12}},      {"cyan", {49.57, -29.71, -28.32}},
    {"white", {95.19, -1.03, 2.93}},          {"neutral 8", {81.29, -0.57, 0.44}},
    {"neutral 6.5", {66.89, -0.75, -0.06}},   {"neutral 5", {50.76, -0.13, 0.14}},
    {"neutral 3.5", {35.63, -0.46, -0.48}},   {"black", {20.64, 0.07, -0.46}},
}};

}  // namespace

const std::array<ChartPatch, kChartPatches>& ChartPatches() {
    static const auto patches = [] {
        std::array<ChartPatch, kChartPatches> adapted;
        for (int i = 0; i < kChartPatches; ++i) {
            const Lab lab = AdaptedToD65(kPublished[i].d50);
            adapted[i] = {kPublished[i].name, lab, LinearFromLab(lab)};
        }
        return adapted;
    }();
    return patches;
}

}  // namespace kvx::tool
