// Prints the median time of a conversion in C++ in microseconds: kvx_converter_time WIDTH HEIGHT SECONDS
// SECONDS
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "KvxFrame/KvxFrame.h"

using Clock = std::chrono::steady_clock;
namespace frame = kvx::frame;

int main(int argc, char** argv) {
    if (argc != 4) return EXIT_FAILURE;
    const auto width = static_cast<uint32_t>(std::atoi(argv[1])), height = static_cast<uint32_t>(std::atoi(argv[2]));
    const std::vector<uint16_t> samples(size_t{width} * height, 1000);
    std::vector<uint8_t> picture(samples.size() * 3);
    const frame::SourceView source = {
        samples.data(), width, height, 0, samples.size() * sizeof samples[0], frame::FormatByName("BayerRG12")};
    const frame::DestinationView destination = {
        picture.data(), width, height, 0, picture.size(), frame::FormatByName("RGB8")};
    frame::Converter converter(source.format.family);
    converter.SetThreads(1);
    converter.Convert(source, destination);
    std::vector<double> times;
    const auto end = Clock::now() + std::chrono::duration<double>(std::atof(argv[3]));
    do {
        const auto start = Clock::now();
        converter.Convert(source, destination);
        times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
    } while (Clock::now() < end);
    std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
    std::printf("%f\n", times[times.size() / 2]);
}
