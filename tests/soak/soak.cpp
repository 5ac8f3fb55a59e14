// Frames without end: soak FRAMES CYCLES. Converts FRAMES frames with components that live throughout, all algorithms
// in turn, and creates, uses and deletes a component of each CYCLES times. Fails when a picture changes or when memory
// grows after the first tenth.
#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>

#include "support/Camera.h"

using namespace kvx::test;

namespace {

constexpr uint32_t kWidth = 320, kHeight = 240;

long ResidentKilobytes() {
    long whole = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> whole >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

/** Runs `step` `count` times. @return true while it gives true and memory stays flat */
template <class Step>
bool StaysFlat(const char* what, long count, const Step& step) {
    long startKilobytes = 0;
    size_t startInUse = 0;
    for (long i = 0; i < count; ++i) {
        if (i == count / 10) {
            startKilobytes = ResidentKilobytes();
            startInUse = mallinfo2().uordblks;
        }
        if (!step(i)) {
            std::printf("%s %ld: not the expected picture\n", what, i);
            return false;
        }
    }
    const long grown = ResidentKilobytes() - startKilobytes;
    const auto leaked = static_cast<long>(mallinfo2().uordblks) - static_cast<long>(startInUse);
    std::printf("%ld %s: resident memory %+ld kB to %ld kB, allocated %+ld bytes\n", count, what, grown,
                ResidentKilobytes(), leaked);
    constexpr long mostKilobytes = 1024, mostBytes = 16384;  // the runtimes keep a little of their own
    return grown <= mostKilobytes && leaked <= mostBytes;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return EXIT_FAILURE;
    std::vector<std::unique_ptr<Camera>> cameras;
    std::vector<uint32_t> hashes;
    for (const Stream& stream : kStreams) {
        cameras.push_back(std::make_unique<Camera>(stream, 1, kWidth, kHeight));
        if (cameras.back()->Frame() != 0) return EXIT_FAILURE;
        hashes.push_back(cameras.back()->Hash());
    }
    const bool frames = StaysFlat("frames", std::atol(argv[1]), [&](long i) {
        const size_t index = size_t(i) % cameras.size();
        return cameras[index]->Frame() == 0 && cameras[index]->Hash() == hashes[index];
    });
    const bool cycles = StaysFlat("cycles of create, convert, delete", std::atol(argv[2]), [&](long) {
        for (size_t index = 0; index < std::size(kStreams); ++index) {
            Camera camera(kStreams[index], 1, kWidth, kHeight);
            if (camera.Frame() != 0 || camera.Hash() != hashes[index]) return false;
        }
        return true;
    });
    return frames && cycles ? EXIT_SUCCESS : EXIT_FAILURE;
}
