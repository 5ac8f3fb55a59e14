// Draws docs/images/ipp-*.png: small complete frames, enlarged: the original and the image of each algorithm.
//
//     kvx_comparison FOLDER
#include <cstdio>
#include <exception>
#include <string>

#include "quality/Cpsnr.h"
#include "quality/Panels.h"
#include "quality/Restoration.h"
#include "quality/Sheet.h"

namespace {

using namespace kvx::quality;

constexpr int kEnlargement = 3;
constexpr const char* kNames[kPanelCount] = {"zone-plate", "colours", "fan", "fence"};

void DrawComparison(int number, const std::string& folder) {
    const cv::Mat original = DrawPanel(number);
    const auto restored = [&original](const char* algorithm) {
        return Restored({original, 255}, {.algorithm = AlgorithmByName(algorithm), .params = PlainParams()});
    };
    WritePng(folder + "/ipp-" + kNames[number] + ".png",
             SheetOf({{original, restored("edge-aware"), restored("ipp")}}, kEnlargement));
    for (const char* algorithm : {"bilinear", "edge-aware", "ipp"})
        std::printf("%-12s %-10s: %.2f dB\n", kNames[number], algorithm,
                    Compare(original, restored(algorithm), 0).colour);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: kvx_comparison FOLDER\n");
        return 2;
    }
    try {
        for (int number = 0; number < kPanelCount; ++number) DrawComparison(number, argv[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kvx_comparison: %s\n", error.what());
        return 1;
    }
    return 0;
}
