#include "frame/learned/swift/SwiftFilters.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "frame/learned/weights/EmbeddedWeights.h"
#include "frame/learned/weights/WeightsReader.h"

namespace kvx::frame {
namespace {

constexpr int kSide = 2 * kSwiftReach + 1;
constexpr size_t kTaps = size_t{kSide} * kSide;

/** TrueSense filters have taps all around, but for the corners; Bayer filters in three rows, or columns. */
bool HasTap(size_t side, Along along, int row, int column) {
    const int rows = std::abs(row), columns = std::abs(column);
    if (side == 4) return rows + columns <= 5;
    return (along == Along::Rows ? rows : columns) <= 1;
}

size_t IndexOf(size_t site, size_t colour, Along along, int row, int column) {
    const size_t filter = (3 * site + colour) * 2 + static_cast<size_t>(along);
    return filter * kTaps + static_cast<size_t>((row + kSwiftReach) * kSide + column + kSwiftReach);
}

/** Four times a sum of a filter's products fits in 32 bits. */
bool IsSmall(std::span<const int16_t> filter) {
    int sum = 0;
    for (const int16_t weight : filter) sum += std::abs(weight);
    return 4 * sum < 65536;
}

/** Whether a filter is its own mirror image: Bayer rows add the samples before they multiply. */
bool IsSymmetric(std::span<const int16_t> filter) {
    for (size_t row = 0; row < kSide; ++row)
        for (size_t column = 0; column < kSide; ++column) {
            const int16_t weight = filter[row * kSide + column];
            if (weight != filter[row * kSide + kSide - 1 - column]) return false;
            if (weight != filter[(kSide - 1 - row) * kSide + column]) return false;
        }
    return true;
}

}  // namespace

int16_t SwiftFilters::Weight(size_t site, size_t colour, Along along, int row, int column) const {
    return weights[IndexOf(site, colour, along, row, column)];
}

SwiftFilters ReadSwiftFilters(std::span<const uint8_t> file) {
    constexpr uint8_t kMagic[] = {'K', 'v', 'x', 'S', 1};
    WeightsReader reader(file);
    WeightsReader::Require(std::memcmp(reader.Take(sizeof kMagic).data(), kMagic, sizeof kMagic) == 0,
                           "it begins otherwise");
    SwiftFilters filters{};
    filters.side = reader.Byte();
    const uint8_t window = reader.Byte();
    filters.shift = reader.Byte();
    const size_t count = reader.Byte();
    WeightsReader::Require(filters.side == 2 || filters.side == 4, "the tile has another side than 2 or 4");
    WeightsReader::Require(window == 3, "gradients are not added over 3x3 samples");
    WeightsReader::Require(filters.shift >= 4 && filters.shift <= 14, "a shift is too small or too large");

    const auto offsets = reader.Take(2 * count);
    const size_t planes = 3 * filters.side * filters.side;
    filters.weights.resize(planes * 2 * kTaps);
    for (size_t plane = 0; plane < planes; ++plane)
        for (const Along along : {Along::Rows, Along::Columns}) {
            const std::vector<int16_t> words = reader.Words(count);
            for (size_t tap = 0; tap < count; ++tap) {
                const auto row = static_cast<int8_t>(offsets[2 * tap]),
                           column = static_cast<int8_t>(offsets[2 * tap + 1]);
                WeightsReader::Require(std::max(std::abs(row), std::abs(column)) <= kSwiftReach &&
                                           (words[tap] == 0 || HasTap(filters.side, along, row, column)),
                                       "a tap is too far away");
                filters.weights[IndexOf(plane / 3, plane % 3, along, row, column)] = words[tap];
            }
            const auto filter = std::span(filters.weights).subspan(IndexOf(plane / 3, plane % 3, along, -3, -3), kTaps);
            WeightsReader::Require(IsSmall(filter), "its weights are too large");
            WeightsReader::Require(filters.side == 4 || IsSymmetric(filter), "a filter is not symmetric");
        }
    reader.RequireEnd();
    return filters;
}

const SwiftFilters& SwiftFiltersFor(Family family) {
    if (family == Family::Bayer) {
        static const SwiftFilters bayer = ReadSwiftFilters(BayerSwiftWeights());
        return bayer;
    }
    static const SwiftFilters trueSense = ReadSwiftFilters(TrueSenseSwiftWeights());
    return trueSense;
}

}  // namespace kvx::frame
