#include "frame/formats/NearestNames.h"

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

std::vector<std::string> NearestNames(std::string_view name, const std::vector<std::string>& candidates, size_t count) {
    std::vector<std::pair<size_t, size_t>> byDistance;  // each with its place, which decides between equals
    for (size_t place = 0; place < candidates.size(); ++place)
        byDistance.emplace_back(EditDistance(name, candidates[place]), place);
    std::sort(byDistance.begin(), byDistance.end());
    std::vector<std::string> nearest;
    for (size_t i = 0; i < std::min(count, candidates.size()); ++i) nearest.push_back(candidates[byDistance[i].second]);
    return nearest;
}

std::optional<std::string> SimilarName(std::string_view name, const std::vector<std::string>& candidates) {
    const std::vector<std::string> nearest = NearestNames(name, candidates, 1);
    const bool isSimilar = !nearest.empty() && 3 * EditDistance(name, nearest[0]) <= 2 * name.size();
    return isSimilar ? std::optional(nearest[0]) : std::nullopt;
}

}  // namespace kvx::frame
