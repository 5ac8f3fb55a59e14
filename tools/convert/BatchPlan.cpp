#include "tools/convert/BatchPlan.h"

#include <filesystem>
#include <unordered_map>

#include "tools/ToolError.h"
#include "tools/files/OutputFile.h"

namespace kvx::tool {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kStem = "{stem}";
constexpr std::string_view kFrame = "{frame}";

std::optional<PictureKind> KindFor(const std::string& path) {
    return LowerExtension(path) == ".dng" ? std::nullopt : std::optional(PictureKindFor(path));
}

/** `output` as a pattern; one that names a single file has no stem in it. */
std::string PatternOf(const std::string& output, bool hasFrames) {
    std::error_code error;
    const bool isDirectory = output.ends_with('/') || (output != "-" && fs::is_directory(output, error));
    const char* name = hasFrames ? "{stem}_{frame}.png" : "{stem}.png";
    return isDirectory ? (fs::path(output) / name).string() : output;
}

std::string Filled(std::string pattern, std::string_view place, const std::string& value) {
    for (size_t at = pattern.find(place); at != std::string::npos; at = pattern.find(place, at + value.size())) {
        pattern.replace(at, place.size(), value);
    }
    return pattern;
}

std::string StemOf(const std::string& input) {
    return input == "-" ? "stdin" : fs::path(input).stem().string();
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

std::vector<FileTask> PlanFiles(const std::vector<std::string>& files, const std::string& output,
                                const std::function<uint64_t(const std::string&)>& countFrames) {
    if (output.empty() && !countFrames) {
        if (files.size() != 2) {
            Fail(ExitCode::Usage, "{}: give a frame and its picture OUT, or frames and --output", files.front());
        }
        return {{files[0], files[1], KindFor(files[1])}};
    }
    const std::string pattern = PatternOf(output, countFrames != nullptr);
    if (countFrames && pattern.find(kFrame) == std::string::npos) {
        Fail(ExitCode::Usage,
             "--frames: needs --output with a directory (ending in /) or a pattern such as out/{{stem}}_{{frame}}.png");
    }
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
        const std::string path = Filled(pattern, kStem, StemOf(input));
        if (!countFrames) {
            tasks.push_back({input, path, kind});
            continue;
        }
        const uint64_t count = countFrames(input);
        const size_t digits = std::to_string(count - 1).size();
        for (uint64_t frame = 0; frame < count; ++frame) {
            tasks.push_back({input, Filled(path, kFrame, fmt::format("{:0{}}", frame, digits)), kind, frame});
        }
    }
    RequireSeparateFiles(tasks);
    return tasks;
}

}  // namespace kvx::tool
