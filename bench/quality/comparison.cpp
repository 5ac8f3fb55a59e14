// Draws docs/images/ipp-*.png: whole small frames, enlarged, as drawn and as each algorithm restores them.
//
//     kvx_comparison FOLDER
#include <cstdio>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <string>

#include "quality/Cpsnr.h"
#include "quality/Panels.h"
#include "quality/Restoration.h"

namespace {

constexpr int kEnlargement = 3;
constexpr int kGap = 6;
constexpr const char* kNames[kvx::quality::kPanelCount] = {"zone-plate", "colours", "fan", "fence"};

void Place(const cv::Mat& picture, int column, cv::Mat& sheet) {
    constexpr int size = kvx::quality::kPanelSize * kEnlargement;
    cv::Mat area = sheet(cv::Rect(column * (size + kGap), 0, size, size));
    cv::resize(picture, area, area.size(), 0, 0, cv::INTER_NEAREST);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: kvx_comparison FOLDER\n");
        return 2;
    }
    constexpr int size = kvx::quality::kPanelSize * kEnlargement;
    for (int number = 0; number < kvx::quality::kPanelCount; ++number) {
        const cv::Mat original = kvx::quality::DrawPanel(number);
        const auto restored = [&original](const char* algorithm) {
            return kvx::quality::Restored({original, 255}, {.algorithm = kvx::quality::AlgorithmByName(algorithm),
                                                            .params = kvx::quality::PlainParams()});
        };
        cv::Mat sheet(size, 3 * size + 2 * kGap, CV_8UC3, cv::Scalar::all(255));
        Place(original, 0, sheet);
        Place(restored("edge-aware"), 1, sheet);
        Place(restored("ipp"), 2, sheet);
        const std::string path = std::string(argv[1]) + "/ipp-" + kNames[number] + ".png";
        if (!cv::imwrite(path, sheet, {cv::IMWRITE_PNG_COMPRESSION, 9})) {
            std::fprintf(stderr, "kvx_comparison: cannot write %s\n", path.c_str());
            return 1;
        }
        for (const char* algorithm : {"bilinear", "edge-aware", "ipp"})
            std::printf("%-12s %-10s: %.2f dB\n", kNames[number], algorithm,
                        kvx::quality::Compare(original, restored(algorithm), 0).colour);
    }
    return 0;
}
