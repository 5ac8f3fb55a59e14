#pragma once

#include <functional>

namespace kvx::tool {

/** Median time in seconds of all runs that start within `budget` seconds, at least one. A first run, which allocates
 * memory, does not count. */
double MedianSeconds(double budget, const std::function<void()>& run);

}  // namespace kvx::tool
