#include "tools/convert/Batch.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>

#include "frame/base/Team.h"

namespace kvx::tool {

Workforce ShareThreads(size_t files, int jobs, int threads) {
    const int all = frame::TeamSize(UINT64_MAX, threads);
    const int wanted = jobs > 0 ? jobs : all;
    const int used = static_cast<int>(std::min<size_t>(files, wanted));
    return {used, std::max(1, all / used)};
}

std::vector<FileReport> RunBatch(const std::vector<FileTask>& tasks, const ConvertSettings& settings, int jobs,
                                 const std::function<void(const FileReport&)>& done) {
    std::vector<FileReport> reports(tasks.size());
    std::atomic<size_t> next = 0;
    std::mutex mutex;  // of `done` and `interruption`
    std::exception_ptr interruption;
    const auto work = [&] {
        FrameJob job(settings);
        for (size_t index = next++; index < tasks.size(); index = next++) {
            reports[index] = job.Run(tasks[index]);
            const std::lock_guard lock(mutex);
            try {
                done(reports[index]);
            } catch (...) {
                interruption = std::current_exception();
                next = tasks.size();
            }
        }
    };
    {
        std::vector<std::jthread> others;
        for (int job = 1; job < jobs; ++job) {
            others.emplace_back(work);
        }
        work();
    }
    if (interruption) {
        std::rethrow_exception(interruption);
    }
    return reports;
}

}  // namespace kvx::tool
