// Pictures have the same bits on every machine.
#include <gtest/gtest.h>

#include "KvxDemosaicing/KvxPipeline.h"
#include "frame/support/TestFrames.h"

namespace kvx::frame {
namespace {

TEST(Checksums, AreThoseOfEveryMachine) {
    const struct {
        const char *format, *algorithm;
        uint32_t plain, finished;
    } cases[] = {
        {"BayerGR12p", "bilinear", 0x214BC7D9, 0x86526F1D},   {"BayerGR12p", "edge-aware", 0x49D1B715, 0x2DF7F6C2},
        {"BayerGR12p", "ipp", 0xE0E3978F, 0xC223F294},        {"BayerGR12p", "fine", 0xC48C81C3, 0xF297B4FC},
        {"BayerGR12p", "swift", 0x83AF9D92, 0xCCA2E633},      {"BayerBG8", "fine", 0x52338AF3, 0x86CEF200},
        {"SCF1WGWR10", "fast", 0xA799678A, 0x65F43541},       {"SCF1WGWR10", "simple", 0x79B8FCE0, 0xDC3BEC3E},
        {"SCF1WGWR10", "bayer-like", 0x73DACBFD, 0xE7FB3FB6}, {"SCF1WGWR10", "kodak-like", 0x1123F5FD, 0xB5057EC8},
        {"SCF1WGWR10", "kodak", 0x829CA7D3, 0xBB90B839},      {"SCF1WGWR10", "fine", 0xAD110B8B, 0x4618B604},
        {"SCF1WGWR10", "swift", 0x030AA683, 0xA2861EF4},      {"Mono14", "", 0x76F702CD, 0xE8B57499},
    };
    for (const auto& c : cases) {
        const Format format = FormatByName(c.format);
        const TestFrame frame = MakeNoise(format, 131, 77);
        const auto checksum = [&](bool isFinished) {
            Converter converter(format.family);
            if (*c.algorithm) converter.SetAlgorithm(c.algorithm);
            converter.SetNoise(NoiseAt(30));
            if (isFinished) converter.SetFinish(EverythingOn());
            const std::vector<uint8_t> pixels = PixelsOf(converter, frame.view, isFinished ? "RGB8" : "RGB16");
            return calcHash(pixels.data(), static_cast<int32_t>(pixels.size()), 1, 0);
        };
        EXPECT_EQ(checksum(false), c.plain) << c.format << " " << c.algorithm;
        EXPECT_EQ(checksum(true), c.finished) << c.format << " " << c.algorithm << ", finished";
    }
}

}  // namespace
}  // namespace kvx::frame
