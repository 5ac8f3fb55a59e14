#include "frame/NearestNames.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace kvx::frame {
namespace {

/** A wrong case is half as bad as a wrong letter, so "bayerrg8" finds "BayerRG8" first. */
size_t SubstitutionCost(char a, char b) {
    if (a == b) {
        return 0;
    }
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b)) ? 1 : 2;
}

/** Edits in half steps: 2 for a letter inserted or removed. */
size_t EditDistance(std::string_view from, std::string_view to) {
    std::vector<size_t> costs(to.size() + 1);
    for (size_t column = 0; column <= to.size(); ++column) {
        costs[column] = 2 * column;
    }
    for (size_t row = 0; row < from.size(); ++row) {
        size_t diagonal = std::exchange(costs[0], 2 * (row + 1));
        for (size_t column = 0; column < to.size(); ++column) {
            const size_t substituted = diagonal + SubstitutionCost(from[row], to[column]);
            diagonal = costs[column + 1];
            costs[column + 1] = std::min({substituted, diagonal + 2, costs[column] + 2});
        }
    }
    return costs.back();
}

}  // namespace

std::vector<std::string> NearestNames(std::string_view name, std::vector<std::string> candidates, size_t count) {
    std::stable_sort(candidates.begin(), candidates.end(), [name](const std::string& a, const std::string& b) {
        return EditDistance(name, a) < EditDistance(name, b);
    });
    candidates.resize(std::min(count, candidates.size()));
    return candidates;
}

}  // namespace kvx::frame
