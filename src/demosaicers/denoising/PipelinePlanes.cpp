#include "demosaicers/denoising/PipelinePlanes.h"

namespace kvx {
namespace {

constexpr int kColourStep = 2;  // to the next cell of the same colour

}  // namespace

bool PipelinePlanes::Reserve(int newWidth, int newHeight) noexcept {
    if (width == newWidth && height == newHeight) return true;
    Release();
    const int cells = newWidth / 2, cellRows = newHeight / 2;
    bool reserved = pan.Reserve(cells, newHeight, 0, 0) && filteredPan.Reserve(cells, newHeight, 0, 0) &&
                    fullPan.Reserve(newWidth, newHeight, 0, 0);
    for (PaddedPlane<int16_t>* plane : {&colour, &difference, &filteredDifference, &lowColour})
        reserved = reserved && plane->Reserve(cells, cellRows, 0, 0);
    for (PaddedPlane<int32_t>& plane : lowPan)
        reserved = reserved && plane.Reserve(cells, cellRows, kLargestSigmaRadius, kOutside);
    for (PaddedPlane<int32_t>& plane : lowColorDiff)
        reserved = reserved && plane.Reserve(cells, cellRows, kColourStep * kLargestSigmaRadius, kOutside);
    if (!reserved) {
        Release();
        return false;
    }
    width = newWidth;
    height = newHeight;
    return true;
}

void PipelinePlanes::Release() noexcept {
    for (PaddedPlane<int16_t>* plane :
         {&pan, &filteredPan, &fullPan, &colour, &difference, &filteredDifference, &lowColour})
        plane->Release();
    for (PaddedPlane<int32_t>* plane : {&lowPan[0], &lowPan[1], &lowColorDiff[0], &lowColorDiff[1]}) plane->Release();
    width = height = 0;
}

}  // namespace kvx
