// Measures the overhead of a batch over library and encoder: kvx_batch [FRAMES] prints seconds and their ratio.
#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <opencv2/imgproc.hpp>
#include <thread>

#include "tools/convert/Batch.h"
#include "tools/files/OutputFile.h"
#include "tools/frames/Formats.h"
#include "tools/frames/FrameConversion.h"
#include "tools/frames/Mosaic.h"
#include "tools/scene/Scene.h"

namespace {

using namespace kvx::tool;
namespace fs = std::filesystem;

constexpr int kRounds = 5;
constexpr int kJobs = 2;

double Seconds(const std::function<void()>& body) {
    const auto start = std::chrono::steady_clock::now();
    body();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/** The unavoidable part: each frame, in memory, through the library and the encoder. */
void ConvertInMemory(const RawFrame& frame, size_t count, PictureKind kind) {
    std::atomic<size_t> next = 0;
    std::vector<std::jthread> workers;
    for (int job = 0; job < kJobs; ++job) {
        workers.emplace_back([&] {
            kvx::frame::Converter converter(frame.format.family);
            converter.SetThreads(1);
            while (next++ < count) {
                EncodePicture(ConvertFrame(converter, ViewOf(frame), RequireFormat("RGB8"), "frame"), kind);
            }
        });
    }
}

void Compare(const char* extension, const RawFrame& frame, const fs::path& directory, size_t count) {
    const fs::path input = directory / "frame_1920x1200_BayerRG12.raw";
    WriteOutput(input.string(), EncodeRaw(frame.samples));
    std::vector<FileTask> tasks;
    for (size_t index = 0; index < count; ++index) {
        const std::string output = (directory / fmt::format("{}{}", index, extension)).string();
        tasks.push_back({input.string(), output, PictureKindFor(output)});
    }
    ConvertSettings settings;
    settings.destination = RequireFormat("RGB8");
    settings.threads = 1;
    std::vector<double> memory;
    std::vector<double> batch;
    for (int round = 0; round < kRounds; ++round) {
        memory.push_back(Seconds([&] { ConvertInMemory(frame, count, *tasks.front().kind); }));
        batch.push_back(Seconds([&] {
            for (const FileReport& report : RunBatch(tasks, settings, kJobs, [](const FileReport&) {})) {
                if (report.failure) {
                    throw *report.failure;
                }
            }
        }));
    }
    std::ranges::sort(memory);
    std::ranges::sort(batch);
    fmt::print("{} frames of 1920x1200, {} at a time, to {}: in memory {:.3f} s, batch {:.3f} s, ratio {:.3f}\n", count,
               kJobs, extension, memory[kRounds / 2], batch[kRounds / 2], batch[kRounds / 2] / memory[kRounds / 2]);
}

}  // namespace

int main(int argc, char** argv) {
    const size_t count = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 40;
    Picture scene = DrawScene();
    cv::resize(scene.pixels, scene.pixels, cv::Size(1920, 1200));
    const RawFrame frame = MakeMosaic(scene, RequireFormat("BayerRG12"));
    const fs::path directory = fs::temp_directory_path() / "kvx_batch";
    fs::create_directories(directory);
    for (const char* extension : {".png", ".tif", ".ppm"}) {
        Compare(extension, frame, directory, count);
    }
    fs::remove_all(directory);
}
