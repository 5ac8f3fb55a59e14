#include "frame/camera/DefectRepair.h"

#include <algorithm>
#include <cstdlib>

#include "frame/samples/SampleRow.h"

namespace kvx::frame {
namespace {

constexpr int kFarthest = 4;        // a period of every mosaic
constexpr size_t kEnoughPairs = 4;  // of the nearest squares around a site
constexpr size_t kMostPairs = 40;   // half of the sites of the largest square

int Sign(int number) {
    return (number > 0) - (number < 0);
}

}  // namespace

void DefectRepair::Prepare(const SourceView& frame) {
    m_width = frame.width;
    m_height = frame.height;
    for (uint32_t site = 0; site < m_pairs.size(); ++site) {
        const uint32_t row = site / kTurns, column = site % kTurns;
        const auto areAlike = [&](int rows, int columns) {  // the site and both neighbours, or both neighbours
            return StoredFilterAt(frame, row + rows, column + columns) ==
                   StoredFilterAt(frame, row - rows, column - columns);
        };
        std::vector<Pair>& pairs = m_pairs[site];
        pairs.clear();
        for (int radius = 1; radius <= kFarthest && pairs.size() < kEnoughPairs; ++radius)
            for (int rows = 0; rows <= radius; ++rows)
                for (int columns = rows == 0 ? 1 : -radius; columns <= radius; ++columns) {
                    if (std::max(rows, std::abs(columns)) != radius || !areAlike(rows, columns) ||
                        StoredFilterAt(frame, row + rows, column + columns) != StoredFilterAt(frame, row, column))
                        continue;
                    const bool isStraight = rows == 0 || columns == 0 || rows == std::abs(columns);
                    pairs.push_back({rows, columns, radius > 1 && isStraight && areAlike(Sign(rows), Sign(columns))});
                }
    }
}

/** The samples around a defect. */
class DefectRepair::Neighbours {
public:
    Neighbours(const DefectRepair& repair, const DefectMask& mask, const uint16_t* mosaic, uint32_t row,
               uint32_t column)
        : m_repair(repair), m_mask(mask), m_mosaic(mosaic), m_row(row), m_column(column) {}

    /** Whether the frame has the sample, and it is no defect. */
    bool IsGood(int rows, int columns) const {
        const int64_t row = int64_t{m_row} + rows, column = int64_t{m_column} + columns;
        return row >= 0 && row < m_repair.m_height && column >= 0 && column < m_repair.m_width &&
               !m_mask.Has(static_cast<uint32_t>(row), static_cast<uint32_t>(column));
    }
    bool IsGoodPair(int rows, int columns) const {
        return IsGood(rows, columns) && IsGood(-rows, -columns);
    }
    int At(int rows, int columns) const {
        return m_mosaic[static_cast<ptrdiff_t>(int64_t{m_row} + rows) * m_repair.m_width + m_column + columns];
    }
    int Difference(int rows, int columns) const {
        return std::abs(At(rows, columns) - At(-rows, -columns));
    }
    /** The difference of a good pair, and of the pair between if there is one, as a mean. Doubled. */
    int Cost(const Pair& pair) const {
        const int far = Difference(pair.rows, pair.columns), stepRows = Sign(pair.rows),
                  stepColumns = Sign(pair.columns);
        return far + (pair.hasBetween && IsGoodPair(stepRows, stepColumns) ? Difference(stepRows, stepColumns) : far);
    }

private:
    const DefectRepair& m_repair;
    const DefectMask& m_mask;
    const uint16_t* m_mosaic;
    uint32_t m_row, m_column;
};

void DefectRepair::Repair(const DefectMask& mask, uint32_t row, uint16_t* mosaic) const {
    mask.ForEach(row, [&](uint32_t column) {
        const Neighbours around(*this, mask, mosaic, row, column);
        uint16_t& sample = mosaic[size_t{row} * m_width + column];
        const std::vector<Pair>& pairs = m_pairs[row % kTurns * kTurns + column % kTurns];
        const Pair* best = nullptr;
        std::array<int, 2 * kMostPairs> good;
        size_t count = 0;
        for (const Pair& pair : pairs) {
            if (around.IsGoodPair(pair.rows, pair.columns) && (!best || around.Cost(pair) < around.Cost(*best)))
                best = &pair;
            for (const int sign : {1, -1})
                if (around.IsGood(sign * pair.rows, sign * pair.columns))
                    good[count++] = around.At(sign * pair.rows, sign * pair.columns);
        }
        if (best) {
            const int sum = around.At(best->rows, best->columns) + around.At(-best->rows, -best->columns);
            sample = static_cast<uint16_t>((sum + 1) / 2);
        } else if (count > 0) {
            std::nth_element(good.begin(), good.begin() + count / 2, good.begin() + count);
            sample = static_cast<uint16_t>(good[count / 2]);
        }
    });
}

}  // namespace kvx::frame
