// Draws docs/images/ipp-*.png and fine-*.png: small complete frames, enlarged: the original and the image of each
// algorithm; for "fine" also what it adds to "ipp", and what remains between its TrueSense image and the original.
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

/** The difference, four times as large, around grey. */
cv::Mat Enlarged(const cv::Mat& image, const cv::Mat& reference) {
    cv::Mat difference;
    cv::subtract(image, reference, difference, {}, CV_16S);
    difference.convertTo(difference, CV_8U, 4, 128);
    return difference;
}

void DrawComparison(int number, const std::string& folder) {
    const cv::Mat original = DrawPanel(number);
    const auto restored = [&original](const char* algorithm) {
        return Restored({original, 255}, {.algorithm = AlgorithmByName(algorithm), .params = PlainParams()});
    };
    const cv::Mat ipp = restored("ipp"), fine = restored("fine"), trueSense = restored("truesense-fine");
    WritePng(folder + "/fine-" + kNames[number] + ".png",
             SheetOf({{original, ipp, fine}, {trueSense, Enlarged(trueSense, original), Enlarged(fine, ipp)}},
                     kEnlargement));
    WritePng(folder + "/ipp-" + kNames[number] + ".png",
             SheetOf({{original, restored("edge-aware"), ipp}}, kEnlargement));
    for (const char* algorithm : {"bilinear", "edge-aware", "ipp", "fine", "truesense-fine"})
        std::printf("%-12s %-14s: %.2f dB\n", kNames[number], algorithm,
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
