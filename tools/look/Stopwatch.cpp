#include "tools/look/Stopwatch.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace kvx::tool {

double MedianSeconds(double budget, const std::function<void()>& run) {
    using Clock = std::chrono::steady_clock;
    const auto secondsSince = [](Clock::time_point start) {
        return std::chrono::duration<double>(Clock::now() - start).count();
    };
    run();
    std::vector<double> times;
    const Clock::time_point begin = Clock::now();
    do {
        const Clock::time_point start = Clock::now();
        run();
        times.push_back(secondsSince(start));
    } while (secondsSince(begin) < budget);
    const auto middle = times.begin() + static_cast<ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

}  // namespace kvx::tool
