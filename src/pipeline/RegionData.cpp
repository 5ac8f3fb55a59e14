#include <cstddef>

#include "pipeline/LogText.h"

namespace kvx {
namespace {

constexpr int kChannels = 3;

struct Region {
    int32_t x, y, columns, rows;
    int32_t planeWidth;
};

template <class T>
void PrintValues(const T* plane, const Region& region, LogText_t* log) {
    for (int32_t row = 0; row < region.rows; ++row)
        for (int32_t column = 0; column < region.columns; ++column) {
            const bool isLast = column == region.columns - 1, isEnd = isLast && row == region.rows - 1;
            const size_t at = size_t(region.y + row) * region.planeWidth + region.x + column;
            const char* format = column == 0 ? (row == 0 ? "[[%d" : " [%d") : " %d ";
            if (isLast) format = isEnd ? "%d]]\n" : "%d]\n";
            Append(log, format, static_cast<int>(plane[at]));
        }
}

template <class T>
void PrintPixels(const T* plane, const Region& region, LogText_t* log) {
    for (int32_t row = 0; row < region.rows; ++row)
        for (int32_t column = 0; column < region.columns; ++column) {
            const T* pixel = plane + (size_t(region.y + row) * region.planeWidth + region.x + column) * kChannels;
            Append(log, column == 0 ? "[[%d " : " [%d ", static_cast<int>(pixel[0]));
            Append(log, "%d ", static_cast<int>(pixel[1]));
            Append(log, column == region.columns - 1 ? "%d]]\n\n" : "%d ", static_cast<int>(pixel[2]));
        }
}

}  // namespace
}  // namespace kvx

int32_t Alg_GetRegionData(const char* name, const void* data, int32_t dataType, int32_t x, int32_t y, int32_t columns,
                          int32_t rows, int32_t planeWidth, int32_t planeHeight, LogText_t* log) noexcept {
    using namespace kvx;
    const bool fits = columns < planeWidth && rows < planeHeight && x >= 0 && y >= 0 &&
                      int64_t{x} + columns <= planeWidth && int64_t{y} + rows <= planeHeight;
    if (!fits) return Fail(log, "region position error.\n");
    Append(log, "%s:\n", name);
    if (dataType < 0 || dataType > PlaneType_Int32) return Fail(log, "data type error.\n");

    const Region region{x, y, columns, rows, planeWidth};
    switch (dataType) {
        case PlaneType_UInt8:
            PrintValues(static_cast<const uint8_t*>(data), region, log);
            break;
        case PlaneType_UInt16:
            PrintValues(static_cast<const uint16_t*>(data), region, log);
            break;
        case PlaneType_Int16:
            PrintValues(static_cast<const int16_t*>(data), region, log);
            break;
        case PlaneType_UInt8x3:
            PrintPixels(static_cast<const uint8_t*>(data), region, log);
            break;
        case PlaneType_UInt16x3:
            PrintPixels(static_cast<const uint16_t*>(data), region, log);
            break;
        default:
            PrintValues(static_cast<const int32_t*>(data), region, log);
    }
    Append(log, "\n");
    return kStageSuccess;
}
