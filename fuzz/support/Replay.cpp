// Replaces libFuzzer in builds without it: runs the inputs of a folder, each unchanged and then with a few bytes
// changed at random, the same in every run.   replay FOLDER CHANGED_VERSIONS
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv) {
    if (argc != 3) return EXIT_FAILURE;
    const int versions = std::atoi(argv[2]);
    long inputs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> text(std::istreambuf_iterator<char>(file), {});
        const std::vector<uint8_t> original(text.begin(), text.end());
        std::mt19937 random(static_cast<unsigned>(original.size()));
        for (int version = 0; version <= versions; ++version, ++inputs) {
            std::vector<uint8_t> input = original;
            for (int change = 0; version > 0 && change < 6 && !input.empty(); ++change)
                input[random() % input.size()] = static_cast<uint8_t>(random() % 3 ? random() : random() % 8);
            LLVMFuzzerTestOneInput(input.data(), input.size());
        }
    }
    std::printf("%ld inputs\n", inputs);
    return inputs > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
