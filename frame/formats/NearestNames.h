#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvx::frame {

/** The `count` candidates that take the fewest edits to reach from `name`, nearest first. */
std::vector<std::string> NearestNames(std::string_view name, const std::vector<std::string>& candidates, size_t count);

/** The nearest candidate, if at most a third of the letters of `name` are wrong. */
std::optional<std::string> SimilarName(std::string_view name, const std::vector<std::string>& candidates);

}  // namespace kvx::frame
