#include "tools/convert/BatchPlan.h"

#include <filesystem>
#include <unordered_map>

#include "tools/ToolError.h"
#include "tools/files/OutputFile.h"

namespace kvx::tool {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kStem = "{stem}";

std::optional<PictureKind> KindFor(const std::string& path) {
    return LowerExtension(path) == ".dng" ? std::nullopt : std::optional(PictureKindFor(path));
}

/** `output` as a pattern; one that names a single file has no stem in it. */
std::string PatternOf(const std::string& output) {
    std::error_code error;
    const bool isDirectory = output.ends_with('/') || (output != "-" && fs::is_directory(output, error));
    return isDirectory ? (fs::path(output) / "{stem}.png").string() : output;
}

std::string Filled(std::string pattern, const std::string& input) {
    const std::string stem = input == "-" ? "stdin" : fs::path(input).stem().string();
    for (size_t at = pattern.find(kStem); at != std::string::npos; at = pattern.find(kStem, at + stem.size())) {
        pattern.replace(at, kStem.size(), stem);
    }
    return pattern;
}

/** The same for every spelling of a path. */
std::string Identity(const std::string& path) {
    return path == "-" ? path : ResolvedPath(path).string();
}

void RequireSeparateFiles(const std::vector<FileTask>& tasks) {
    std::unordered_map<std::string, const FileTask*> users;
    for (const FileTask& task : tasks) {
        users.emplace(Identity(task.input), &task);
    }
    for (const FileTask& task : tasks) {
        const auto [user, isNew] = users.emplace(Identity(task.output), &task);
        if (!isNew && task.output != "-") {
            Fail(ExitCode::Usage,
                 "{}: would be written to {}, which is already taken by {}: rename a frame, or choose another --output",
                 task.input, task.output, user->second->input);
        }
    }
}

}  // namespace

std::vector<FileTask> PlanFiles(const std::vector<std::string>& files, const std::string& output) {
    if (output.empty()) {
        if (files.size() != 2) {
            Fail(ExitCode::Usage, "{}: give a frame and its picture OUT, or frames and --output", files.front());
        }
        return {{files[0], files[1], KindFor(files[1])}};
    }
    const std::string pattern = PatternOf(output);
    if (files.size() > 1 && pattern.find(kStem) == std::string::npos) {
        Fail(ExitCode::Usage,
             "--output {}: names one file for {} frames: give a directory (ending in /) or a pattern such "
             "as out/{{stem}}.png",
             output, files.size());
    }
    const std::optional<PictureKind> kind = KindFor(pattern);
    std::vector<FileTask> tasks;
    tasks.reserve(files.size());
    for (const std::string& input : files) {
        tasks.push_back({input, Filled(pattern, input), kind});
    }
    RequireSeparateFiles(tasks);
    return tasks;
}

}  // namespace kvx::tool
