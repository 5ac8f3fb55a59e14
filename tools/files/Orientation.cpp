#include "tools/files/Orientation.h"

#include <array>
#include <optional>

namespace kvx::tool {

void MakeUpright(cv::Mat& picture, uint64_t orientation) {
    constexpr int kHorizontally = 1, kVertically = 0, kBoth = -1;  // as cv::flip() has it
    struct Step {
        bool isTransposed;
        std::optional<int> flip;
    };
    constexpr std::array<Step, 8> kSteps = {{{false, std::nullopt},
                                             {false, kHorizontally},
                                             {false, kBoth},
                                             {false, kVertically},
                                             {true, std::nullopt},
                                             {true, kHorizontally},
                                             {true, kBoth},
                                             {true, kVertically}}};
    const Step& step = kSteps.at(orientation - 1);
    if (step.isTransposed) cv::transpose(picture, picture);
    if (step.flip) cv::flip(picture, picture, *step.flip);
}

}  // namespace kvx::tool
