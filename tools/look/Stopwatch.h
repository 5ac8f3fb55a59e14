#pragma once

#include <functional>

namespace kvx::tool {

/** Seconds of the median of as many runs as start within `budget` seconds, at least one. A run before these, which
 * takes the memory, does not count. */
double MedianSeconds(double budget, const std::function<void()>& run);

}  // namespace kvx::tool
